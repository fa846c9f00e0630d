#include "platform/sim/outlook_errors.h"

#include <string>

namespace corvina::sim {

Error OutlookError(int32_t number, std::wstring_view description) {
  return Error(number, kOutlookSource, std::wstring(description));
}

Error UnknownMemberError(std::wstring_view object, std::wstring_view member) {
  return OutlookError(kDispUnknownName, L"Unknown name: " + std::wstring(object) +
                                            L" has no member '" + std::wstring(member) + L"'.");
}

Error BadIndexError() { return OutlookError(kDispBadIndex, L"Array index out of bounds."); }

Error ObjectNotFoundError() {
  return OutlookError(kMapiNotFound, L"The operation failed. An object could not be found.");
}

Error InvalidArgumentError() {
  return OutlookError(kInvalidArgument, L"One or more parameter values are not valid.");
}

Error ConditionError(std::wstring_view rest) {
  return OutlookError(kDispException,
                      L"Cannot parse condition. Error at \"" + std::wstring(rest) + L"\".");
}

Error UnknownPropertyError(std::wstring_view name) {
  return OutlookError(kDispException, L"The property \"" + std::wstring(name) + L"\" is unknown.");
}

Error DisconnectedError() {
  return OutlookError(kObjectDisconnected,
                      L"The object invoked has disconnected from its clients.");
}

}  // namespace corvina::sim
