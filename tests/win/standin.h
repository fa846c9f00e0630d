#pragma once
// A stand-in Outlook: the sim Outlook over one SimStore, shown through IDispatch and
// connection points as Outlook shows its object model, so the real add-in DLL drives it as it
// would drive Outlook. The test keeps the store in its hands: it builds the mailbox, plans
// faults (every member the add-in calls is one counted sim call), raises events
// (store.new_mail().Raise(), a control's Click()) and inspects what the add-in changed.
#include <memory>
#include <string_view>

#include "platform/sim/outlook_application.h"
#include "standin_context.h"
#include "standin_object.h"

namespace corvina::standin {

class StandIn {
 public:
  explicit StandIn(sim::SimStore& store)
      : store_(store),
        context_(std::make_shared<Context>()),
        application_(std::make_shared<sim::SimApplication>(store)) {}

  sim::SimStore& store() { return store_; }
  const Counters& counters() const { return context_->counters(); }

  // Outlook's Application object, as Outlook hands it to OnConnection.
  Microsoft::WRL::ComPtr<IDispatch> Application() {
    return Expose<outlook::Application>(context_, application_);
  }

  // Takes a member away, as an Outlook without it: GetIDsOfNames answers DISP_E_UNKNOWNNAME
  // and Invoke (for a caller that kept the id) DISP_E_MEMBERNOTFOUND.
  void Hide(std::wstring_view kind, std::wstring_view member) { context_->Hide(kind, member); }

  // Makes a member answer Nothing, as an Outlook that has no such object at hand: a null
  // VT_DISPATCH or VT_EMPTY. The number of arguments is still checked; the sim member does not
  // run.
  void ReturnNothing(std::wstring_view kind, std::wstring_view member,
                     Nothing how = Nothing::kNullObject) {
    context_->ReturnNothing(kind, member, how);
  }

  // Objects of `kind` ("Application") no longer offer connection points: QueryInterface for
  // IConnectionPointContainer fails, as on a host that raises no events.
  void TakeEvents(std::wstring_view kind) { context_->TakeEvents(kind); }

  // After the add-in is gone: how many of the sinks it advised are still referenced (leaked).
  size_t ReleaseKeptSinks() { return context_->ReleaseKeptSinks(); }

 private:
  sim::SimStore& store_;
  std::shared_ptr<Context> context_;
  std::shared_ptr<sim::SimApplication> application_;
};

}  // namespace corvina::standin
