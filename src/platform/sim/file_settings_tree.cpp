#include "platform/sim/file_settings_tree.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include "base/text.h"
#include "platform/sim/settings_file_format.h"

namespace corvina::sim {

namespace fs = std::filesystem;

namespace {
constexpr wchar_t kSource[] = L"Settings";

std::wstring Label(const fs::path& p) {
  std::u8string u = p.u8string();
  return FromUtf8(std::string(u.begin(), u.end()));
}
}  // namespace

FileSettingsTree::FileSettingsTree(Faults& faults, fs::path file)
    : faults_(faults),
      file_(std::move(file)),
      label_(Label(file_)),
      name_(Label(file_.filename())) {
  std::error_code ec;
  if (!fs::exists(file_, ec)) return;
  std::string text;
  // A folder opens as a file on Linux and then throws from the first read, so it is refused
  // before any read.
  std::ifstream in;
  if (!fs::is_directory(file_, ec)) in.open(file_, std::ios::binary);
  if (in.is_open()) text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  if (!in.is_open() || in.bad()) {
    problems_.emplace_back(0, kSource,
                           L"Settings file " + name_ + L" cannot be read; every setting takes "
                                                       L"its default");
    return;
  }
  ParsedSettings parsed = ParseSettingsFile(text, name_);
  table_ = std::move(parsed.table);
  problems_ = std::move(parsed.problems);
  layout_ = std::move(parsed.layout);
}

FileSettingsTree::~FileSettingsTree() {
  try {
    Flush();
  } catch (const std::exception& e) {
    std::fprintf(stderr, "settings not saved: %s\n", e.what());
  }
}

std::optional<std::wstring> FileSettingsTree::Read(const std::wstring& application,
                                                   const std::wstring& section,
                                                   const std::wstring& key) {
  faults_.Enter(Service::kSettings, "Read");
  const std::wstring* value = table_.Find(application, section, key);
  return value ? std::optional<std::wstring>(*value) : std::nullopt;
}

void FileSettingsTree::Write(const std::wstring& application, const std::wstring& section,
                             const std::wstring& key, const std::wstring& value) {
  faults_.Enter(Service::kSettings, "Write");
  std::wstring why = UnstorableReason(application, section, key);
  if (!why.empty())
    throw Error(5, kSource,
                L"Cannot keep " + application + L"\\" + section + L"\\" + key +
                    L" in a settings file: " + why);
  if (table_.Set(application, section, key, value)) dirty_ = true;
}

std::vector<Error> FileSettingsTree::TakeProblems() { return std::exchange(problems_, {}); }

void FileSettingsTree::Flush() {
  if (!dirty_) return;
  std::string text = FormatSettingsFile(layout_, table_);
  fs::path temp = file_;
  temp += ".tmp";
  std::error_code ec;
  if (file_.has_parent_path()) fs::create_directories(file_.parent_path(), ec);
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    if (out) fs::rename(temp, file_, ec);
    if (!out || ec) {
      std::error_code ignored;
      fs::remove(temp, ignored);
      throw Error(75, kSource, L"Settings file " + label_ + L" cannot be written");
    }
  }
  dirty_ = false;
}

}  // namespace corvina::sim
