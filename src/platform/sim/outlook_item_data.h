#pragma once
// What the sim mailbox stores for one item. Tests build items with the Make* helpers, adjust
// fields directly and hand them to SimStore; the object model reads and writes the same data
// through shared pointers, so a test sees every change the add-in makes.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"

namespace corvina::sim {

struct SimAttachmentData {
  std::wstring file_name;
  // Position in the body; 0 marks a picture embedded in an HTML body.
  int32_t position = 1;
  std::string bytes;
};

struct SimItemData {
  int32_t item_class = 43;  // outlook::olMail
  std::wstring message_class = L"IPM.Note";
  std::wstring entry_id;  // the store assigns a unique one when left empty
  std::wstring subject;
  std::wstring body;
  std::wstring sender_name;
  std::wstring sender_address;
  // Recipients as typed: addresses or "Name <address>", separated by ";" or ",". Cc and Bcc
  // have no object-model members here; a test or the simulator sets them.
  std::wstring to, cc, bcc;
  // Every item has a delivery time in the store, even a report whose object model has no
  // ReceivedTime: filters and sorts use it. The store sets it to the creation time when it is
  // left at zero (and the creation time to it, the other way round).
  Date received_time;
  Date creation_time;
  Date sent_on;
  bool unread = true;
  // Message size in bytes; when unset it is computed from the content (EffectiveSize).
  std::optional<int32_t> size;
  std::vector<SimAttachmentData> attachments;
  std::vector<std::wstring> recipients;

  // What happened to the item, for tests to check.
  int32_t folder = 0;  // default-folder kind holding it; 0 once removed from the store
  bool sent = false;
  bool deleted = false;
  int displayed = 0;  // number of Display calls
};

using SimItemPtr = std::shared_ptr<SimItemData>;

// The set size, else attachment bytes plus two bytes per character of subject and body.
int32_t EffectiveSize(const SimItemData& item);

// Builders for the item kinds a mail folder holds. Times not given are equal to the one given.
SimItemData MakeMail(std::wstring subject, Date received);
SimItemData MakeReport(Date created);  // a non-delivery report (REPORT.IPM.Note.NDR)
SimItemData MakeMeetingRequest(std::wstring subject, Date received);
SimItemData MakePost(std::wstring subject, Date created);

}  // namespace corvina::sim
