#include "host/des_vireo.h"

#include "host/new_mail.h"
#include "settings/guard.h"

namespace corvina {

DesVireo::DesVireo(Services services) : addin_(std::move(services)) {}

DesVireo::~DesVireo() {
  // Event subscriptions go before the objects they point into.
  ReleaseGlobalObjects();
}

void DesVireo::AddinInstance_Initialize() noexcept {
  // Errors are ignored here: a missing Outlook object is simply looked for again later.
  addin_.Ignore([&] {
    outlook::Ref<outlook::Application> app;
    if (addin_.services.create_application) app = addin_.services.create_application();
    addin_.oApplication = app;
  });
  addin_.Ignore([&] { addin_.ShowProgress(L"Connecting To Outlook ..."); });
}

void DesVireo::IDTExtensibility2_OnBeginShutdown() noexcept {
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnBeginShutdown", [] {});
}

void DesVireo::IDTExtensibility2_OnAddInsUpdate() noexcept {
  Guard(addin_.log, Context(), L"IDTExtensibility2_OnAddInsUpdate", [] {});
}

void DesVireo::AddinInstance_OnDisconnection() noexcept {
  inspector_bars_.Release();
  explorer_close_event_.Reset();
  explorer_deactivate_event_.Reset();
  new_mail_event_.Reset();
  startup_event_.Reset();
  oMainExplorer.reset();
  addin_.oApplication.reset();
}

void DesVireo::AddinInstance_Terminate() noexcept { AddinInstance_OnDisconnection(); }

void DesVireo::oApplication_NewMail() noexcept {
  try {
    corvina::oApplication_NewMail(addin_, Context());
  } catch (...) {
  }
}

void DesVireo::oApplication_Startup() noexcept {
  Guard(addin_.log, Context(), L"oApplication_Startup", [] {});
}

void DesVireo::oMainExplorer_Close() noexcept {
  Guard(addin_.log, Context(), L"oMainExplorer_Close", [&] {
    explorer_close_event_.Reset();
    explorer_deactivate_event_.Reset();
    oMainExplorer.reset();
  });
}

void DesVireo::oMainExplorer_Deactivate() noexcept {
  // Nothing to do when the main window loses the focus; the handler exists so the event is
  // answered like every other.
  Guard(addin_.log, Context(), L"oMainExplorer_Deactivate", [] {});
}

void DesVireo::ConnectApplicationEvents() {
  auto& application = *addin_.oApplication;
  new_mail_event_ = HookEvent(L"Application.NewMail",
                              [&] { return application.OnNewMail([this] { oApplication_NewMail(); }); });
  startup_event_ = HookEvent(L"Application.Startup",
                             [&] { return application.OnStartup([this] { oApplication_Startup(); }); });
  inspector_bars_.Connect(application);
}

void DesVireo::ConnectExplorerEvents() {
  if (!oMainExplorer) return;
  auto& explorer = *oMainExplorer;
  explorer_close_event_ = HookEvent(L"Explorer.Close", [&] {
    return explorer.OnClose([this] { oMainExplorer_Close(); });
  });
  explorer_deactivate_event_ = HookEvent(L"Explorer.Deactivate", [&] {
    return explorer.OnDeactivate([this] { oMainExplorer_Deactivate(); });
  });
}

}  // namespace corvina

#include "host/button_clicks.h"

namespace corvina {

void DesVireo::HookButton(int index) {
  const size_t at = static_cast<size_t>(index);
  auto& control = My_Button[at];
  if (!control) return;
  Guard(addin_.log, Context(), L"HookButton", [&] {
    button_events_[at] = index == kComboIndex
                             ? control->OnChange([this, index] { OnControlEvent(index); })
                             : control->OnClick([this, index] { OnControlEvent(index); });
  });
}

void DesVireo::OnControlEvent(int index) noexcept {
  try {
    std::wstring text;
    if (index == kComboIndex) {
      const auto& combo = My_Button[static_cast<size_t>(index)];
      Guard(addin_.log, Context(), L"My_Button7_Change", [&] { if (combo) text = combo->Text(); });
    }
    RouteControlEvent(addin_, Context(), index, text);
  } catch (...) {
  }
}

}  // namespace corvina
