#pragma once
// The run-time error of the classic BASIC runtime: a number and a description.
// Every procedure that traps errors catches this (and any std::exception) at its
// boundary and reports it through the common error box.

#include <stdexcept>
#include <string>

namespace tarvenix {

namespace err {
inline constexpr int kInvalidCall = 5;        // Invalid procedure call or argument
inline constexpr int kOverflow = 6;           // Overflow
inline constexpr int kOutOfMemory = 7;        // Out of memory
inline constexpr int kSubscript = 9;          // Subscript out of range
inline constexpr int kDivisionByZero = 11;    // Division by zero
inline constexpr int kTypeMismatch = 13;      // Type mismatch
inline constexpr int kInternal = 51;          // Internal error
inline constexpr int kBadFileName = 52;       // Bad file name or number
inline constexpr int kFileNotFound = 53;      // File not found
inline constexpr int kFileAlreadyOpen = 55;   // File already open
inline constexpr int kDeviceIO = 57;          // Device I/O error
inline constexpr int kDiskFull = 61;          // Disk full
inline constexpr int kInputPastEnd = 62;      // Input past end of file
inline constexpr int kPermissionDenied = 70;  // Permission denied
inline constexpr int kPathFileAccess = 75;    // Path/File access error
inline constexpr int kPathNotFound = 76;      // Path not found
}  // namespace err

// The classic description of an error number ("Overflow" for 6); unknown numbers
// get "Application-defined or object-defined error".
std::string ErrorDescription(int number);

class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(int number);
  RuntimeError(int number, std::string description, std::string source = "");

  int Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }
  const std::string& Source() const noexcept { return source_; }

 private:
  int number_;
  std::string description_;
  std::string source_;
};

// Inside a catch block for std::exception (the error traps): the exception in
// flight as a run-time error. Our own errors come back as they are;
// out-of-memory becomes error 7 and any other exception error 51, so nothing
// escapes a trap unreported.
RuntimeError CurrentError();

// Throws the run-time error with its classic description.
[[noreturn]] void Raise(int number);

}  // namespace tarvenix
