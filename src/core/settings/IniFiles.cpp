#include "settings/IniFiles.h"

#include <optional>
#include <vector>

#include "session/FileUtils.h"
#include "session/Utils.h"
#include "session/Session.h"

namespace tarvenix::modIniFiles {
namespace {

// One line of an INI text and the line end that followed it ("" on the last line).
struct IniLine {
  std::string_view text;
  std::string_view end;
};

std::vector<IniLine> SplitLines(std::string_view t) {
  std::vector<IniLine> lines;
  std::size_t start = 0;
  while (start < t.size()) {
    std::size_t i = t.find_first_of("\r\n", start);
    if (i == std::string_view::npos) {
      lines.push_back({t.substr(start), {}});
      break;
    }
    std::size_t endLen = (t[i] == '\r' && i + 1 < t.size() && t[i + 1] == '\n') ? 2 : 1;
    lines.push_back({t.substr(start, i - start), t.substr(i, endLen)});
    start = i + endLen;
  }
  return lines;
}

std::string_view TrimBlanks(std::string_view s) {
  std::size_t b = s.find_first_not_of(" \t");
  if (b == std::string_view::npos) return {};
  std::size_t e = s.find_last_not_of(" \t");
  return s.substr(b, e - b + 1);
}

bool SameText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 32);
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 32);
    if (x != y) return false;
  }
  return true;
}

// The section name of a "[name]" line.
std::optional<std::string_view> SectionName(std::string_view line) {
  std::string_view t = TrimBlanks(line);
  if (t.empty() || t.front() != '[') return std::nullopt;
  std::size_t close = t.find(']');
  return TrimBlanks(t.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
}

// The key of a "key=value" line.
std::optional<std::string_view> KeyName(std::string_view line) {
  std::size_t eq = line.find('=');
  if (eq == std::string_view::npos) return std::nullopt;
  return TrimBlanks(line.substr(0, eq));
}

std::string_view ValueOf(std::string_view line) {
  std::string_view v = TrimBlanks(line.substr(line.find('=') + 1));
  if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
    v = v.substr(1, v.size() - 2);
  return v;
}

// Where a key stands: the index of the section line, of the key's line, and of
// the section's last line that is not blank.
struct KeyPlace {
  std::optional<std::size_t> section;
  std::optional<std::size_t> key;
  std::size_t lastFilled = 0;
};

KeyPlace FindKey(const std::vector<IniLine>& lines, std::string_view section, std::string_view key) {
  KeyPlace p;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::optional<std::string_view> name = SectionName(lines[i].text);
    if (name) {
      if (p.section) break;  // the section ended
      if (SameText(*name, TrimBlanks(section))) {
        p.section = i;
        p.lastFilled = i;
      }
      continue;
    }
    if (!p.section) continue;
    if (!TrimBlanks(lines[i].text).empty()) p.lastFilled = i;
    std::optional<std::string_view> k = KeyName(lines[i].text);
    if (k && SameText(*k, TrimBlanks(key))) {
      p.key = i;
      break;
    }
  }
  return p;
}

std::string WithoutLineBreaks(std::string_view v) {
  std::string r(v);
  for (char& c : r)
    if (c == '\r' || c == '\n') c = ' ';
  return r;
}

}  // namespace

std::string LookupValue(std::string_view iniText, std::string_view section, std::string_view key) {
  std::vector<IniLine> lines = SplitLines(iniText);
  KeyPlace p = FindKey(lines, section, key);
  if (!p.key) return "";
  return std::string(ValueOf(lines[*p.key].text));
}

std::string UpdateValue(std::string_view iniText, std::string_view section, std::string_view key,
                        std::string_view value) {
  std::vector<IniLine> lines = SplitLines(iniText);
  // New lines take the line end the file already uses.
  std::string_view newline = "\r\n";
  for (const IniLine& l : lines)
    if (!l.end.empty()) {
      newline = l.end;
      break;
    }
  const std::string keyLine = std::string(TrimBlanks(key)) + "=" + WithoutLineBreaks(value);
  KeyPlace p = FindKey(lines, section, key);

  std::string out;
  out.reserve(iniText.size() + keyLine.size() + section.size() + 8);
  auto emit = [&](std::size_t i) {
    out.append(lines[i].text);
    out.append(lines[i].end.empty() && i + 1 < lines.size() ? newline : lines[i].end);
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (p.key && i == *p.key) {
      out.append(keyLine);
      out.append(lines[i].end);
      continue;
    }
    emit(i);
    if (p.section && !p.key && i == p.lastFilled) {
      if (lines[i].end.empty()) out.append(newline);
      out.append(keyLine);
      out.append(newline);
    }
  }
  if (!p.section) {
    if (!out.empty() && out.back() != '\n' && out.back() != '\r') out.append(newline);
    out.append("[" + std::string(TrimBlanks(section)) + "]");
    out.append(newline);
    out.append(keyLine);
    out.append(newline);
  }
  return out;
}

namespace {
// Settings files are small; a larger file is not one of ours and is left alone.
constexpr std::size_t kMaxIniFileSize = 16 * 1024 * 1024;
}  // namespace

std::string GetKeyValue(Session& s, UiPort& ui, const std::string& file, const std::string& section,
                        const std::string& key) {
  std::string value;
  modUtils::Trapped(s, ui, "modInifiles.GetGeyValue", [&] {
    if (!modUtils::IsFile(file)) return;
    value = LookupValue(modUtils::ReadFileBytes(file, kMaxIniFileSize), section, key);
    if (value.size() > kMaxValueLength) value.resize(kMaxValueLength);
  });
  return value;
}

bool PutKeyValue(Session& s, UiPort& ui, const std::string& file, const std::string& section,
                 const std::string& key, const std::string& value) {
  try {
    std::string old;
    if (modUtils::IsFile(file)) old = modUtils::ReadFileBytes(file, kMaxIniFileSize);
    modUtils::WriteFileAtomically(file, UpdateValue(old, section, key, value));
    return true;
  } catch (const std::exception&) {
    RuntimeError e = CurrentError();
    modUtils::ShowMessage(s, ui, modUtils::kMsgError, "modIniFiles.PutKeyValue", "The settings could not be saved to " + file, e);
    return false;
  }
}

}  // namespace tarvenix::modIniFiles
