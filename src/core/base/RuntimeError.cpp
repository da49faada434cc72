#include "base/RuntimeError.h"

#include <exception>
#include <new>
#include <utility>

namespace tarvenix {

std::string ErrorDescription(int number) {
  switch (number) {
    case 3: return "Return without GoSub";
    case err::kInvalidCall: return "Invalid procedure call or argument";
    case err::kOverflow: return "Overflow";
    case err::kOutOfMemory: return "Out of memory";
    case err::kSubscript: return "Subscript out of range";
    case 10: return "This array is fixed or temporarily locked";
    case err::kDivisionByZero: return "Division by zero";
    case err::kTypeMismatch: return "Type mismatch";
    case 14: return "Out of string space";
    case 28: return "Out of stack space";
    case err::kInternal: return "Internal error";
    case err::kBadFileName: return "Bad file name or number";
    case err::kFileNotFound: return "File not found";
    case 54: return "Bad file mode";
    case err::kFileAlreadyOpen: return "File already open";
    case err::kDeviceIO: return "Device I/O error";
    case 58: return "File already exists";
    case err::kDiskFull: return "Disk full";
    case err::kInputPastEnd: return "Input past end of file";
    case 67: return "Too many files";
    case 68: return "Device unavailable";
    case err::kPermissionDenied: return "Permission denied";
    case 71: return "Disk not ready";
    case err::kPathFileAccess: return "Path/File access error";
    case err::kPathNotFound: return "Path not found";
    case 91: return "Object variable or With block variable not set";
    case 94: return "Invalid use of Null";
    default: return "Application-defined or object-defined error";
  }
}

RuntimeError::RuntimeError(int number)
    : RuntimeError(number, ErrorDescription(number)) {}

RuntimeError::RuntimeError(int number, std::string description, std::string source)
    : std::runtime_error(description),
      number_(number),
      description_(std::move(description)),
      source_(std::move(source)) {}

RuntimeError CurrentError() {
  try {
    throw;
  } catch (const RuntimeError& e) {
    return e;
  } catch (const std::bad_alloc&) {
    return RuntimeError(err::kOutOfMemory);
  } catch (const std::exception& e) {
    return RuntimeError(err::kInternal, std::string(ErrorDescription(err::kInternal)) + ": " + e.what());
  }
}

void Raise(int number) { throw RuntimeError(number); }

}  // namespace tarvenix
