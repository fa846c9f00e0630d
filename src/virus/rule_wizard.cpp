#include "virus/rule_wizard.h"

#include "base/text.h"

namespace corvina {
namespace {

bool HasSemicolon(const std::wstring& text) { return text.find(L';') != std::wstring::npos; }

}  // namespace

std::wstring DescribeRule(const AddIn& addin, const RuleValues& values) {
  using enum TextId;
  // In the order a scan tests them.
  const std::pair<const std::wstring*, TextId> fields[] = {
      {&values.from, kRuleSentenceFrom},
      {&values.body, kRuleSentenceBody},
      {&values.subject, kRuleSentenceSubject},
      {&values.attachment, kRuleSentenceAttachment}};
  std::wstring parts;
  for (const auto& [value, text] : fields) {
    const std::wstring trimmed = Trim(*value);
    if (trimmed.empty()) continue;
    if (!parts.empty()) parts += L", " + addin.Text(kRuleSentenceOr) + L" ";
    parts += addin.Text(text, {trimmed});
  }
  if (parts.empty()) return addin.Text(kRuleSentenceNone);
  std::wstring sentence = addin.Text(kRuleSentenceIntro) + L" " + parts + L". " +
                          addin.Text(kRuleSentenceTail);
  if (!values.active) sentence += L" " + addin.Text(kRuleSentenceInactive);
  return sentence;
}

bool RunRuleWizard(AddIn& addin) {
  RuleEditing& editing = addin.rules.editing;
  bool finished = addin.Run(L"RunRuleWizard", false, [&] {
    Rule& current = editing.glbCurrentRule;
    editing.glbRuleWizardName = current.Description;  // the name step starts with it
    RuleWizardView view;
    view.caption = addin.Text(TextId::kRuleWizardCaption);
    view.values = RuleValues{current.Description, current.Subject, current.Body,
                             current.Attachment, current.From, current.Active};
    auto tell = [&](TextId id, std::initializer_list<std::wstring_view> args = {}) {
      addin.services.ui.MsgBox(addin.Text(id, args), vbExclamation, kProductName);
    };
    RuleWizardEvents events;
    events.accept_name = [&](const std::wstring& typed) {
      const std::wstring name = Trim(typed);
      if (name.empty()) {
        tell(TextId::kRuleNameEmpty);
        return false;
      }
      // A ";" would split the name into two entries of the stored list.
      if (HasSemicolon(name)) {
        tell(TextId::kRuleValueSemicolon);
        return false;
      }
      editing.glbRuleWizardName = name;
      if (addin.rules.glbRules.IsDescriptionAlreadyExists(name, 1, editing)) {
        tell(TextId::kRuleNameExists, {name});
        return false;
      }
      return true;
    };
    events.describe = [&](const RuleValues& values) { return DescribeRule(addin, values); };
    events.accept_values = [&](const RuleValues& values) {
      for (const std::wstring* value : {&values.subject, &values.body, &values.attachment,
                                        &values.from}) {
        if (HasSemicolon(*value)) {
          tell(TextId::kRuleValueSemicolon);
          return false;
        }
      }
      return true;
    };
    if (!addin.services.ui.ShowRuleWizard(view, events)) return false;
    current.Description = editing.glbRuleWizardName;
    current.Subject = Trim(view.values.subject);
    current.Body = Trim(view.values.body);
    current.Attachment = Trim(view.values.attachment);
    current.From = Trim(view.values.from);
    current.Active = view.values.active;
    return true;
  });
  editing.glbIsNewRule = false;
  return finished;
}

}  // namespace corvina
