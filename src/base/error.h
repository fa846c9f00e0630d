#pragma once
// The one error type of the add-in. Platform calls throw it; every guarded procedure catches
// it and logs it. Its three fields are those of a COM EXCEPINFO / a classic Err object, so a
// failure raised by Outlook maps onto it without loss.
#include <cstdint>
#include <exception>
#include <string>

namespace corvina {

class Error : public std::exception {
 public:
  Error(int32_t number, std::wstring source, std::wstring description);

  int32_t number() const { return number_; }
  const std::wstring& source() const { return source_; }
  const std::wstring& description() const { return description_; }
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  int32_t number_;
  std::wstring source_;
  std::wstring description_;
  std::string what_;
};

// Error numbers the core raises itself, with the classic runtime meanings.
inline constexpr int32_t kErrOverflow = 6;
inline constexpr int32_t kErrSubscript = 9;
inline constexpr int32_t kErrTypeMismatch = 13;
inline constexpr int32_t kErrFileNotFound = 53;
inline constexpr int32_t kErrFileExists = 58;
inline constexpr int32_t kErrPermissionDenied = 70;
inline constexpr int32_t kErrPathNotFound = 76;
inline constexpr int32_t kErrObjectRequired = 424;
inline constexpr int32_t kErrObjectVariableNotSet = 91;
inline constexpr int32_t kErrServerUnavailable = 462;

// Source name of errors raised by the add-in's own code (not by Outlook or Windows).
inline constexpr wchar_t kOwnErrorSource[] = L"Vireo";

[[noreturn]] void Raise(int32_t number, std::wstring description);

}  // namespace corvina
