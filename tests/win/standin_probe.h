#pragma once
// The test's own hands on the stand-in, independent of the add-in's dispatch client: a
// late-bound call that reports exactly what IDispatch answered, argument builders, and an
// event sink that records what each event passed.
#include <string>
#include <vector>

#include "platform/win32/unique_handle.h"
#include "platform/win32/windows_api.h"

namespace corvina::standin {

struct Outcome {
  HRESULT hr = E_FAIL;
  win32::UniqueVariant result;
  // From the EXCEPINFO of a DISP_E_EXCEPTION.
  int32_t number = 0;  // wCode, else scode
  std::wstring source;
  std::wstring description;
  UINT bad_argument = 0;

  IDispatch* object() const;             // the result's object (null when it is none)
  std::wstring text() const;             // the result as text, "" when it is none
};

// GetIDsOfNames, then Invoke with `args` given first argument first (each call owns copies).
Outcome Late(IDispatch* object, const wchar_t* name, WORD flags = DISPATCH_PROPERTYGET | DISPATCH_METHOD,
             const std::vector<VARIANT>& args = {});
Outcome Put(IDispatch* object, const wchar_t* name, const VARIANT& value);
// A chain of argument-less gets: Path(app, {L"ActiveExplorer", L"CommandBars"}).
Microsoft::WRL::ComPtr<IDispatch> Path(IDispatch* object, std::initializer_list<const wchar_t*> names);

// Argument builders. Text allocates a BSTR that the Outcome's call does not free: tests keep
// their texts in an ArgList, which does.
VARIANT I4(int32_t value);
VARIANT I2(int16_t value);
VARIANT Bool(bool value);
VARIANT Omitted();  // an optional argument left out
class ArgList {
 public:
  ArgList() = default;
  ArgList(const ArgList&) = delete;
  ArgList& operator=(const ArgList&) = delete;
  ~ArgList();
  VARIANT Text(const wchar_t* value);

 private:
  std::vector<BSTR> owned_;
};

// One event a RecordingSink received.
struct Received {
  DISPID id;
  std::vector<VARTYPE> types;  // of rgvarg, as passed (last argument first)
  std::wstring ctrl_tag;       // the Tag of an object argument, when there is one
};

// An events sink answering for one dispinterface; it records every Invoke.
Microsoft::WRL::ComPtr<IDispatch> MakeRecordingSink(const IID& events, std::vector<Received>& log);
// Advises `sink` on `source`'s connection point for `events`; the cookie, or 0 on failure.
DWORD Advise(IDispatch* source, const IID& events, IDispatch* sink,
             Microsoft::WRL::ComPtr<IConnectionPoint>& point);

}  // namespace corvina::standin
