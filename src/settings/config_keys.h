#pragma once
// The stored form of every setting: section, key as read, key as written, in-memory type. One
// table drives both loading and saving so the two cannot drift apart; the few keys that are
// read and written under different spellings say so here.
#include <span>
#include <string>
#include <variant>

#include "settings/config.h"

namespace corvina {

// What happens to a value right after it is read.
enum class FixUp {
  kNone,
  kBlankIsDefault,  // a value blank after trimming becomes the declared default
};

using ConfigMember = std::variant<std::wstring Config::*,  // S: kept as read
                                  int32_t Config::*,       // L: 32-bit number
                                  int16_t Config::*,       // I: 16-bit number
                                  bool Config::*>;         // B: "True"/"False"

struct ConfigKey {
  const wchar_t* section;
  const wchar_t* read_key;   // nullptr: written but never read
  const wchar_t* write_key;  // nullptr: read but never written by the general save
  ConfigMember member;
  FixUp fix_up = FixUp::kNone;
};

// Groups in the order loading and saving walk them; the folder list and LastMailMonitorTime
// are handled between the groups by code of their own.
std::span<const ConfigKey> ThumbnailConfigKeys();  // the first keys of "Configuration"
std::span<const ConfigKey> GeneralConfigKeys();    // "Configuration" up to HideDistListOnServer
std::span<const ConfigKey> ViewConfigKeys();       // "Thumbnail", "Picker", the counters and
                                                   // the preview, scan and tray flags,
                                                   // "Uploader", the file-type lists
std::span<const ConfigKey> ChatConfigKeys();       // "Chat", then SmartSenderSubject

// The text a member holds, as it is stored.
std::wstring StoredText(const Config& config, const ConfigMember& member);
// Converts and assigns stored text; a non-numeric L/I/B text throws error 13.
void AssignStoredText(Config& config, const ConfigMember& member, const std::wstring& text);

}  // namespace corvina
