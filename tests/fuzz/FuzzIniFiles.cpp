// The settings file reader and writer on a file of arbitrary bytes: one key is
// written, and then that key reads back as written while every other key reads
// as it did before. Writing the same value again changes nothing.
//
// Input: the section (byte % 4: "General", "general", " GENERAL ", or a name
// from the next byte), the key (byte % 6: the four settings keys, one in other
// case, or a name from the next byte), the value's length (byte % 128) and its
// bytes (made printable, without quotes); then the file.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "FuzzSupport.h"
#include "settings/IniFiles.h"
#include "session/Session.h"

using namespace tarvenix;

namespace {

std::string NameFrom(const char* stem, uint8_t byte) { return stem + std::to_string(byte % 16); }

std::string SectionFrom(fuzz::InputHeader& in) {
  const uint8_t choice = in.Byte();
  const uint8_t name = in.Byte();
  switch (choice % 4) {
    case 0: return "General";
    case 1: return "general";
    case 2: return " GENERAL ";
    default: return NameFrom("Section", name);
  }
}

std::string KeyFrom(fuzz::InputHeader& in) {
  const uint8_t choice = in.Byte();
  const uint8_t name = in.Byte();
  switch (choice % 6) {
    case 0: return "N50/N63 Parameter";
    case 1: return "Failure Fraction";
    case 2: return "Confidence Level";
    case 3: return "Sound Status";
    case 4: return "sound status";
    default: return NameFrom("Key", name);
  }
}

// A value as the settings are: printable, no blanks around it, no quotes.
std::string ValueFrom(fuzz::InputHeader& in) {
  std::string value(in.Bytes(in.Byte() % 128));
  for (char& c : value) {
    c = static_cast<char>(0x21 + static_cast<unsigned char>(c) % 94);
    if (c == '"' || c == '\'') c = 'q';
  }
  if (value.size() > 2) value[value.size() / 2] = ' ';  // blanks inside are kept
  return value;
}

std::string Trimmed(std::string_view s) {
  const std::size_t b = s.find_first_not_of(" \t");
  if (b == std::string_view::npos) return "";
  return std::string(s.substr(b, s.find_last_not_of(" \t") - b + 1));
}

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    auto up = [](char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c; };
    if (up(a[i]) != up(b[i])) return false;
  }
  return true;
}

// Every (section, key) the text names, as a reader of the file would list them.
std::vector<std::pair<std::string, std::string>> NamedKeys(std::string_view text) {
  std::vector<std::pair<std::string, std::string>> keys;
  std::optional<std::string> section;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) end = text.size();
    const std::string line = Trimmed(text.substr(start, end - start));
    if (!line.empty() && line.front() == '[') {
      section = Trimmed(line.substr(1, line.find(']') == std::string::npos ? std::string::npos : line.find(']') - 1));
    } else if (section && line.find('=') != std::string::npos) {
      keys.emplace_back(*section, Trimmed(line.substr(0, line.find('='))));
    }
    start = end + 1;
  }
  return keys;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::InputHeader in(data, size);
  const std::string section = SectionFrom(in);
  const std::string key = KeyFrom(in);
  const std::string value = ValueFrom(in);
  const std::string before(in.Rest());

  const std::string after = modIniFiles::UpdateValue(before, section, key, value);
  fuzz::Require(modIniFiles::LookupValue(after, section, key) == value, "the written key reads back", after);
  for (const auto& [otherSection, otherKey] : NamedKeys(before)) {
    if (SameName(otherSection, Trimmed(section)) && SameName(otherKey, key)) continue;
    fuzz::Require(modIniFiles::LookupValue(before, otherSection, otherKey) ==
                      modIniFiles::LookupValue(after, otherSection, otherKey),
                  "no other key is lost or changed", "[" + otherSection + "] " + otherKey + "\n" + after);
  }
  fuzz::Require(modIniFiles::UpdateValue(after, section, key, value) == after, "writing the same value again changes nothing");

  // The same through the file: written atomically, read back cut at 99 characters.
  Session s;
  s.bSoundStatus = false;
  fuzz::CountingUi ui;
  const std::string file = fuzz::WriteScratch("Tarvenix.ini", before);
  fuzz::Require(modIniFiles::PutKeyValue(s, ui, file, section, key, value), "a writable settings file is written",
                ui.lastMessage);
  fuzz::Require(modIniFiles::GetKeyValue(s, ui, file, section, key) == value.substr(0, modIniFiles::kMaxValueLength),
                "the file's key reads back, cut at 99 characters");
  fuzz::Require(ui.messages == 0, "a settings file of any content reads without an error", ui.lastMessage);
  return 0;
}
