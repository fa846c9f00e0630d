#include "platform/sim/mail_server.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace corvina::sim {
namespace {

std::wstring_view TrimBlanks(std::wstring_view s) {
  while (!s.empty() && (s.front() == L' ' || s.front() == L'\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == L' ' || s.back() == L'\t')) s.remove_suffix(1);
  return s;
}

// "Name <address>" or a bare address: the address.
std::wstring_view BareAddress(std::wstring_view entry) {
  const size_t open = entry.rfind(L'<');
  if (open == std::wstring_view::npos) return TrimBlanks(entry);
  const size_t close = entry.find(L'>', open);
  return TrimBlanks(entry.substr(open + 1, close == std::wstring_view::npos ? close : close - open - 1));
}

void AddOnce(std::vector<std::wstring>& list, std::wstring value) {
  if (std::none_of(list.begin(), list.end(),
                   [&](const std::wstring& v) { return EqualsIgnoreCase(v, value); }))
    list.push_back(std::move(value));
}

}  // namespace

MailServer::MailServer(std::function<Date()> now) : now_(std::move(now)) {}

void MailServer::Join(const std::wstring& user, const std::wstring& address, SimStore& store) {
  members_.push_back({user, address, &store});
  store.on_send = [this, user](const SimItemPtr& mail) { Take(user, mail); };
}

std::wstring MailServer::UserOf(std::wstring_view address) const {
  const std::wstring bare(BareAddress(address));
  for (const Member& m : members_)
    if (!bare.empty() && EqualsIgnoreCase(m.address, bare)) return m.user;
  return L"";
}

std::vector<std::wstring> MailServer::Addresses(std::wstring_view field) {
  std::vector<std::wstring> out;
  size_t from = 0;
  for (size_t i = 0; i <= field.size(); ++i) {
    if (i < field.size() && field[i] != L';' && field[i] != L',') continue;
    std::wstring_view address = BareAddress(field.substr(from, i - from));
    if (!address.empty()) out.emplace_back(address);
    from = i + 1;
  }
  return out;
}

void MailServer::Take(const std::wstring& from, const SimItemPtr& mail) {
  Delivery delivery{from, mail, {}, {}, holding_};
  std::vector<std::wstring> addresses;
  for (const std::wstring* field : {&mail->to, &mail->cc, &mail->bcc})
    for (std::wstring& a : Addresses(*field)) addresses.push_back(std::move(a));
  for (const std::wstring& recipient : mail->recipients)
    for (std::wstring& a : Addresses(recipient)) addresses.push_back(std::move(a));
  for (std::wstring& address : addresses) {
    const std::wstring user = UserOf(address);
    if (user.empty()) {
      AddOnce(delivery.outside, std::move(address));
    } else {
      AddOnce(delivery.to_users, user);
    }
  }
  // Reported before it is delivered: the readers' add-ins react inside the delivery.
  if (on_delivery) on_delivery(delivery);
  if (holding_) {
    held_.push_back(delivery);
  } else {
    Deliver(delivery);
  }
}

void MailServer::Deliver(const Delivery& delivery) {
  const Member* sender = nullptr;
  for (const Member& m : members_)
    if (m.user == delivery.from) sender = &m;
  for (const std::wstring& user : delivery.to_users) {
    for (const Member& m : members_) {
      if (m.user != user) continue;
      // The reader's copy: what the mail says, not what happened to the sender's item.
      SimItemData copy = MakeMail(delivery.mail->subject, now_());
      copy.body = delivery.mail->body;
      copy.to = delivery.mail->to;
      copy.cc = delivery.mail->cc;  // Bcc is not shown to readers
      copy.recipients = delivery.mail->recipients;
      copy.attachments = delivery.mail->attachments;
      copy.sent_on = delivery.mail->sent_on;
      copy.sender_name = sender ? sender->user : delivery.from;
      copy.sender_address = sender ? sender->address : L"";
      m.store->DeliverNewMail(std::move(copy));
    }
  }
}

size_t MailServer::DeliverHeld() {
  std::vector<Delivery> held = std::exchange(held_, {});
  for (Delivery& delivery : held) {
    delivery.held = false;
    delivery.released = true;
    delivery.outside.clear();  // those left when the mail was sent
    if (on_delivery) on_delivery(delivery);
    Deliver(delivery);
  }
  return held.size();
}

}  // namespace corvina::sim
