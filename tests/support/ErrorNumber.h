#pragma once
// The run-time error number a call raises, or 0 when it raises none.

#include "base/RuntimeError.h"

namespace tarvenix::test {

template <typename F>
int ErrorNumberOf(F&& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.Number();
  }
  return 0;
}

}  // namespace tarvenix::test
