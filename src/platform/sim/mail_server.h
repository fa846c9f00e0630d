#pragma once
// The mail server between simulated Outlooks. Each simulated user joins with the address
// others write to and the store of their Outlook; what one user's Outlook sends is delivered
// into the Inbox of every user the mail is addressed to (To, Cc and Bcc, addresses compared
// ignoring case), raising NewMail there, with the received time of the shared clock. Mail for
// addresses of nobody simulated goes "outside" and is only reported.
//
// Delivery can be held back, so a mail can arrive while its reader's Outlook is closed: the
// start-up sweeps then find it, as they find mail that came in overnight.
#include <functional>
#include <string>
#include <vector>

#include "base/date.h"
#include "platform/sim/outlook_store.h"

namespace corvina::sim {

class MailServer {
 public:
  // What the server did with one sent mail, for a transcript.
  struct Delivery {
    std::wstring from;                   // the sending user
    SimItemPtr mail;                     // the item in the sender's Sent Items
    std::vector<std::wstring> to_users;  // simulated users it reached (or will reach)
    std::vector<std::wstring> outside;   // addresses of nobody simulated
    bool held = false;                   // waiting for DeliverHeld
    bool released = false;               // delivered by DeliverHeld, told before when held
  };

  explicit MailServer(std::function<Date()> now);
  MailServer(const MailServer&) = delete;
  MailServer& operator=(const MailServer&) = delete;

  // From now on what `store` sends goes through this server. The store must outlive it.
  void Join(const std::wstring& user, const std::wstring& address, SimStore& store);
  // The user whose address this is (ignoring case and any "Name <...>" around it), or "".
  std::wstring UserOf(std::wstring_view address) const;

  // Told of every mail sent and of every delivery of a held one.
  std::function<void(const Delivery&)> on_delivery;

  void set_holding(bool holding) { holding_ = holding; }
  bool holding() const { return holding_; }
  // Delivers the held mails in the order they were sent; returns how many there were.
  size_t DeliverHeld();

  // The addresses of a recipient field: "a@x; Name <b@y>, c@z" gives a@x, b@y, c@z.
  static std::vector<std::wstring> Addresses(std::wstring_view field);

 private:
  struct Member {
    std::wstring user, address;
    SimStore* store;
  };
  void Take(const std::wstring& from, const SimItemPtr& mail);
  void Deliver(const Delivery& delivery);

  std::function<Date()> now_;
  std::vector<Member> members_;
  std::vector<Delivery> held_;
  bool holding_ = false;
};

}  // namespace corvina::sim
