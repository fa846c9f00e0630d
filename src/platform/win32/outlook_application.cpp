// Application and its windows: Explorers, Explorer, Inspector.
#include "platform/win32/outlook_application.h"

#include "platform/win32/event_sink.h"
#include "platform/win32/outlook_events.h"
#include "platform/win32/outlook_objects.h"

namespace corvina::win32 {

namespace {

class ComApplication final : public outlook::Application {
 public:
  explicit ComApplication(Dispatch d) : d_(std::move(d)) {}

  outlook::Ref<outlook::Explorers> Explorers() override {
    return WrapExplorers(d_.Get<Dispatch>(L"Explorers"));
  }
  outlook::Ref<outlook::Explorer> ActiveExplorer() override {
    return WrapExplorer(d_.Call<Dispatch>(L"ActiveExplorer"));
  }
  outlook::Ref<outlook::Inspector> ActiveInspector() override {
    return WrapInspector(d_.Call<Dispatch>(L"ActiveInspector"));
  }
  outlook::Ref<outlook::Inspectors> Inspectors() override {
    return WrapInspectors(d_.Get<Dispatch>(L"Inspectors"));
  }
  outlook::Ref<outlook::NameSpace> GetNamespace(const std::wstring& type) override {
    return WrapNameSpace(d_.Call<Dispatch>(L"GetNamespace", type));
  }
  outlook::Ref<outlook::Item> CreateItem(int32_t kind) override {
    return WrapItem(d_.Call<Dispatch>(L"CreateItem", kind));
  }
  EventConnection OnNewMail(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kApplicationEvents11, kDispIdNewMail, std::move(handler),
                       L"Application.NewMail");
  }
  EventConnection OnStartup(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kApplicationEvents11, kDispIdStartup, std::move(handler),
                       L"Application.Startup");
  }

 private:
  Dispatch d_;
};

class ComExplorers final : public outlook::Explorers {
 public:
  explicit ComExplorers(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::Explorer> Item(int32_t index) override {
    return WrapExplorer(d_.Call<Dispatch>(L"Item", index));
  }

 private:
  Dispatch d_;
};

class ComExplorer final : public outlook::Explorer {
 public:
  explicit ComExplorer(Dispatch d) : d_(std::move(d)) {}
  outlook::Ref<outlook::Selection> Selection() override {
    return WrapSelection(d_.Get<Dispatch>(L"Selection"));
  }
  outlook::Ref<outlook::CommandBars> CommandBars() override {
    return WrapCommandBars(d_.Get<Dispatch>(L"CommandBars"));
  }
  void Activate() override { d_.Call(L"Activate"); }
  EventConnection OnClose(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kExplorerEvents10, kDispIdExplorerClose, std::move(handler),
                       L"Explorer.Close");
  }
  EventConnection OnDeactivate(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kExplorerEvents10, kDispIdExplorerDeactivate, std::move(handler),
                       L"Explorer.Deactivate");
  }

 private:
  Dispatch d_;
};

class ComInspector final : public outlook::Inspector {
 public:
  explicit ComInspector(Dispatch d) : d_(std::move(d)) {}
  outlook::Ref<outlook::Item> CurrentItem() override {
    return WrapItem(d_.Get<Dispatch>(L"CurrentItem"));
  }
  outlook::Ref<outlook::CommandBars> CommandBars() override {
    return WrapCommandBars(d_.Get<Dispatch>(L"CommandBars"));
  }
  EventConnection OnClose(std::function<void()> handler) override {
    return AdviseEvent(d_.get(), kInspectorEvents10, kDispIdInspectorClose, std::move(handler),
                       L"Inspector.Close");
  }

 private:
  Dispatch d_;
};

class ComInspectors final : public outlook::Inspectors {
 public:
  explicit ComInspectors(Dispatch d) : d_(std::move(d)) {}
  int32_t Count() override { return d_.Get<int32_t>(L"Count"); }
  outlook::Ref<outlook::Inspector> Item(int32_t index) override {
    return WrapInspector(d_.Call<Dispatch>(L"Item", index));
  }
  EventConnection OnNewInspector(
      std::function<void(outlook::Ref<outlook::Inspector>)> handler) override {
    auto ids = d_.ids();
    return AdviseEventWithArguments(
        d_.get(), kInspectorsEvents, kDispIdNewInspector,
        [ids, handler = std::move(handler)](const DISPPARAMS& params) {
          // NewInspector(Inspector): the one argument is the new window.
          if (params.cArgs < 1 || !params.rgvarg) return;
          auto window = ObjectArgument(params.rgvarg[params.cArgs - 1]);
          if (!window) return;
          handler(WrapInspector(Dispatch(std::move(window), ids)));
        },
        L"Inspectors.NewInspector");
  }

 private:
  Dispatch d_;
};

}  // namespace

outlook::Ref<outlook::Application> WrapApplication(IDispatch* application) {
  if (!application) return nullptr;
  return std::make_shared<ComApplication>(Dispatch(application, std::make_shared<DispatchIdCache>(),
                                                   L"Application"));
}

outlook::Ref<outlook::Explorers> WrapExplorers(Dispatch object) {
  return MakeWrapper<ComExplorers>(std::move(object), L"Explorers");
}
outlook::Ref<outlook::Explorer> WrapExplorer(Dispatch object) {
  return MakeWrapper<ComExplorer>(std::move(object), L"Explorer");
}
outlook::Ref<outlook::Inspectors> WrapInspectors(Dispatch object) {
  return MakeWrapper<ComInspectors>(std::move(object), L"Inspectors");
}
outlook::Ref<outlook::Inspector> WrapInspector(Dispatch object) {
  return MakeWrapper<ComInspector>(std::move(object), L"Inspector");
}

}  // namespace corvina::win32
