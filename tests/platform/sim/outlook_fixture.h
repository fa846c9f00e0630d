#pragma once
// A sim Outlook over an in-memory disk, as the Outlook tests of this folder use it.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/text.h"
#include "platform/outlook.h"
#include "platform/sim/faults.h"
#include "platform/sim/memory_file_system.h"
#include "platform/sim/outlook_application.h"
#include "platform/sim/outlook_errors.h"
#include "platform/sim/outlook_objects.h"
#include "platform/sim/outlook_store.h"

namespace corvina::sim {

class OutlookTest : public ::testing::Test {
 protected:
  OutlookTest() { files.AddDrive(L'C', 1 << 20); }

  static Date Jan(int day, int hour, int minute = 0, int second = 0) {
    return FromCivil({2024, 1, day, hour, minute, second});
  }

  outlook::Ref<outlook::Items> Folder(int32_t kind) {
    return app.GetNamespace(L"MAPI")->GetDefaultFolder(kind)->Items();
  }
  outlook::Ref<outlook::Items> Inbox() { return Folder(outlook::olFolderInbox); }

  // The subjects of a collection in its order, joined by blanks.
  static std::wstring Subjects(outlook::Items& items) {
    std::wstring out;
    for (int32_t i = 1; i <= items.Count(); ++i) {
      out += (i > 1 ? L" " : L"") + items.Item(i)->Subject();
    }
    return out;
  }

  Faults faults;
  MemoryFileSystem files{faults};
  SimStore store{faults, files};
  SimApplication app{store};
};

// Runs `call` and returns the Error it threw; fails the test when it threw none.
template <typename F>
Error CaughtError(F&& call) {
  try {
    call();
  } catch (const Error& e) {
    return e;
  }
  ADD_FAILURE() << "no corvina::Error thrown";
  return Error(0, L"", L"");
}

}  // namespace corvina::sim
