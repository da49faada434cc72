#pragma once
// The run-time error number a call raises, 0 when it raises none.

#include <functional>

#include "analysis/RuntimeError.h"

namespace tarvenix::test {

inline int ErrorNumberOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.Number();
  }
  return 0;
}

}  // namespace tarvenix::test
