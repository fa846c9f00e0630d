#include "host/command_bars.h"

#include "base/text.h"
#include "host/control_table.h"
#include "settings/guard.h"

namespace corvina {
namespace {

outlook::Ref<outlook::CommandBar> AddBar(outlook::CommandBars& bars, const std::wstring& name) {
  auto bar = bars.Add(name, outlook::msoBarTop, false);
  bar->SetVisible(true);
  return bar;
}

void UpdateAddressBookFlag(AddIn& addin, outlook::Application& application) {
  bool available = false;
  try {
    available = application.GetNamespace(L"MAPI")->AddressListCount() > 0;
  } catch (...) {
    // No address book to offer: the distribution-list menu stays off. Logged, since a
    // failing Outlook call here is worth knowing about.
    addin.log.LogError(addin.ErrorContext(), L"CreateAddInCommandBar", CurrentError());
    available = false;
  }
  if (!available) {
    addin.config.IsdAddressBookAvailable = L"0";
    ConfigStore store = addin.Store();
    SaveConfig(addin.config, store);
  } else {
    addin.config.IsdAddressBookAvailable = L"1";
  }
}

outlook::Ref<outlook::CommandBarControl> CreateButton(AddIn& addin, outlook::CommandBar& bar,
                                                         int index) {
  const ControlSpec* row = FindControl(index);
  if (!row) Raise(kErrSubscript, L"Subscript out of range");
  if (auto existing = FindTaggedControl(bar, row->tag)) {
    if (index == 5 || index == 8) {
      existing->SetVisible(false);
      return nullptr;
    }
    return existing;
  }
  auto control = bar.Controls()->Add(outlook::msoControlButton, false);
  control->SetStyle(outlook::msoButtonIconAndCaption);
  if (addin.config.HideAllText != L"1") control->SetCaption(index == 9 ? L"" : addin.Text(row->caption));
  control->SetFaceId(row->face_id);
  control->SetToolTipText(addin.Text(row->tooltip));
  control->SetTag(row->tag);
  return control;
}

void ToggleFace(AddIn& addin, const wchar_t* tag, TextId caption, int32_t face,
                int32_t busy_face, bool flag) {
  auto explorer = addin.oApplication ? addin.oApplication->ActiveExplorer() : nullptr;
  if (!explorer) return;
  auto bar = FindBar(*explorer->CommandBars(), kBarName);
  if (!bar) return;
  auto control = FindTaggedControl(*bar, tag);
  if (!control) return;
  const bool show_text = addin.config.HideAllText != L"1";
  if (flag) {
    control->SetVisible(false);
    if (control->FaceId() == busy_face) {
      control->SetFaceId(face);
    } else {
      control->SetFaceId(busy_face);
      if (show_text) control->SetCaption(addin.Text(caption));
    }
    control->SetVisible(true);
  } else {
    control->SetFaceId(face);
    if (show_text) control->SetCaption(addin.Text(caption));
  }
}

}  // namespace

// Both lookups ask Outlook once instead of walking the window's bars or a bar's controls:
// every call crosses into Outlook, and a window carries a hundred bars or more.
outlook::Ref<outlook::CommandBar> FindBar(outlook::CommandBars& bars, const std::wstring& name) {
  return bars.ItemByName(name);
}

outlook::Ref<outlook::CommandBarControl> FindTaggedControl(outlook::CommandBar& bar,
                                                              const std::wstring& tag) {
  return bar.FindControl(tag);
}

outlook::Ref<outlook::CommandBar> CreateAddInCommandBar(AddIn& addin,
                                                        outlook::Application& application) {
  return addin.Run(L"CreateAddInCommandBar", outlook::Ref<outlook::CommandBar>(), [&] {
    auto bars = application.ActiveExplorer()->CommandBars();
    auto bar = FindBar(*bars, kBarName);
    if (!bar) bar = AddBar(*bars, kBarName);
    UpdateAddressBookFlag(addin, application);
    return bar;
  });
}

outlook::Ref<outlook::CommandBar> CreateAddInCommandBarInspector(AddIn& addin,
                                                                 outlook::Inspector& inspector) {
  return addin.Run(L"CreateAddInCommandBarInspector", outlook::Ref<outlook::CommandBar>(), [&] {
    auto bars = inspector.CommandBars();
    auto bar = FindBar(*bars, kInspectorBarName);
    if (!bar) bar = AddBar(*bars, kInspectorBarName);
    if (addin.oApplication) UpdateAddressBookFlag(addin, *addin.oApplication);
    return bar;
  });
}

outlook::Ref<outlook::CommandBarControl> CreateAddInButton(AddIn& addin,
                                                           outlook::Application& application,
                                                           int index) {
  return addin.Run(L"CreateAddInButton", outlook::Ref<outlook::CommandBarControl>(), [&] {
    return CreateButton(addin, *FindBar(*application.ActiveExplorer()->CommandBars(), kBarName),
                        index);
  });
}

outlook::Ref<outlook::CommandBarControl> CreateAddInButtonInspector(AddIn& addin,
                                                                    outlook::Inspector& inspector,
                                                                    int index) {
  return addin.Run(L"CreateAddInButtonInspector", outlook::Ref<outlook::CommandBarControl>(), [&] {
    return CreateButton(addin, *FindBar(*inspector.CommandBars(), kInspectorBarName), index);
  });
}

outlook::Ref<outlook::CommandBarControl> CreateAddInComboBox(AddIn& addin,
                                                             outlook::Application& application,
                                                             int index) {
  return addin.Run(L"CreateAddInComboBox", outlook::Ref<outlook::CommandBarControl>(), [&] {
    const ControlSpec* row = FindControl(index);
    if (!row) Raise(kErrSubscript, L"Subscript out of range");
    auto bar = FindBar(*application.ActiveExplorer()->CommandBars(), kBarName);
    // No combo box on the bar: the empty reference fails here, and that is only logged.
    auto combo = FindTaggedControl(*bar, row->tag);
    combo->SetVisible(false);
    return combo;
  });
}

void RemoveAddInCommandBarButton(AddIn& addin, int32_t RemoveMode) {
  addin.Run(L"RemoveAddInCommandBarButton", [&] {
    if (RemoveMode != 1 || !addin.oApplication) return;
    auto explorer = addin.oApplication->ActiveExplorer();
    if (!explorer) return;
    if (auto bar = FindBar(*explorer->CommandBars(), kBarName)) bar->Delete();
  });
}

void ToggleSaveFaceID(AddIn& addin, bool flag) {
  addin.Run(L"ToggleSaveFaceID",
            [&] { ToggleFace(addin, kTagSave, TextId::kCaptionSave, kSaveFace, kSaveBusyFace, flag); });
}

void ToggleSmartSenderFaceID(AddIn& addin, bool flag) {
  addin.Run(L"ToggleSmartSenderFaceID", [&] {
    ToggleFace(addin, kTagSmartSender, TextId::kCaptionSmartSender, kSmartSenderFace, kSmartSenderBusyFace, flag);
  });
}

}  // namespace corvina
