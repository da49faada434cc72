#pragma once
// Private-profile (INI) files: sections and keys matched without regard to case,
// "" for whatever is missing, values of up to 99 characters; writing keeps every
// other section, key, comment and their order, and replaces the file atomically.

#include <string>
#include <string_view>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modIniFiles {

// Longest value text handed back; longer values are cut.
inline constexpr std::size_t kMaxValueLength = 99;

// The value of `key` in the first section named `section` of an INI text, blanks
// around it dropped and surrounding quotes removed; "" when missing.
std::string LookupValue(std::string_view iniText, std::string_view section, std::string_view key);

// The INI text with `key` in `section` set to `value`: the key's line rewritten in
// place, or a line added at the end of the section, or the section added at the
// end of the text. Line breaks in the value become blanks.
std::string UpdateValue(std::string_view iniText, std::string_view section, std::string_view key,
                        std::string_view value);

// The key's value (at most 99 characters) or "" when the file, section or key is
// missing. Errors: the common error box "modInifiles.GetGeyValue".
std::string GetKeyValue(Session& s, UiPort& ui, const std::string& file, const std::string& section,
                        const std::string& key);

// Writes the value, creating the file when missing. Errors: the common error box
// "modIniFiles.PutKeyValue" naming the file; the old file stays whole. Returns
// false when the value could not be written.
bool PutKeyValue(Session& s, UiPort& ui, const std::string& file, const std::string& section,
                 const std::string& key, const std::string& value);

}  // namespace tarvenix::modIniFiles
