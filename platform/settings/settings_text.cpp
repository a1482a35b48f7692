#include "platform/settings/settings_text.h"

#include <algorithm>

#include "platform/text/letters.h"
#include "platform/text/trim.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string quoted(std::wstring_view text) {
  std::string out = "\"";
  for (const char c : toUtf8(text)) {
    switch (c) {
      case '"':
      case '\\':
        out += {'\\', c};
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\0':
        out += "\\0";
        break;
      default:
        out += c;
    }
  }
  return out + '"';
}

// Reads a quoted text at the start and takes it off.
std::optional<std::wstring> takeQuoted(std::string_view& text) {
  if (text.empty() || text.front() != '"') return std::nullopt;
  std::string out;
  for (size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') {
      text.remove_prefix(i + 1);
      return fromUtf8(out);
    }
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i == text.size()) break;
    out += text[i] == 'n' ? '\n' : text[i] == 'r' ? '\r' : text[i] == '0' ? '\0' : text[i];
  }
  return std::nullopt;
}

// Separators at the ends have no meaning.
std::wstring normalSection(std::wstring_view section) {
  while (!section.empty() && section.front() == L'\\') section.remove_prefix(1);
  while (!section.empty() && section.back() == L'\\') section.remove_suffix(1);
  return std::wstring(section);
}

bool isInside(const std::wstring& inner, const std::wstring& outer) {
  if (outer.empty()) return true;
  return inner.size() > outer.size() && inner.compare(0, outer.size(), outer) == 0 &&
         inner[outer.size()] == L'\\';
}

}  // namespace

SettingsText::SettingsText(std::string_view text) {
  // Some editors put a mark before the first line, which would hide a heading there.
  while (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    lines_.push_back(parse(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

std::string SettingsText::toText() const {
  std::string text;
  for (const Line& line : lines_) text += line.raw + '\n';
  return text;
}

SettingsText::Line SettingsText::parse(std::string_view raw) {
  Line line;
  line.raw = raw;
  std::string_view text = trimmed(raw);
  if (text.size() >= 2 && text.front() == '[' && text.back() == ']') {
    line.kind = Line::heading;
    line.name = normalSection(fromUtf8(text.substr(1, text.size() - 2)));
  } else if (auto name = takeQuoted(text)) {
    text = trimmed(text);
    if (text.empty() || text.front() != '=') return line;
    text = trimmed(text.substr(1));
    auto value = takeQuoted(text);
    if (!value || !trimmed(text).empty()) return line;
    line.kind = Line::value;
    line.name = std::move(*name);
    line.text = std::move(*value);
  }
  line.upper = upperCased(line.name);
  return line;
}

SettingsText::Line SettingsText::headingLine(std::wstring_view section) {
  return parse("[" + toUtf8(normalSection(section)) + "]");
}

SettingsText::Line SettingsText::valueLine(std::wstring_view name, std::wstring_view value) {
  return parse(quoted(name) + "=" + quoted(value));
}

bool SettingsText::hasSection(std::wstring_view section) const {
  const std::wstring wanted = upperCased(normalSection(section));
  return wanted.empty() || std::any_of(lines_.begin(), lines_.end(), [&](const Line& line) {
           return line.kind == Line::heading && (line.upper == wanted || isInside(line.upper, wanted));
         });
}

std::optional<std::wstring> SettingsText::value(std::wstring_view section, std::wstring_view name) const {
  const std::wstring wantedSection = upperCased(normalSection(section)),
                     wantedName = upperCased(std::wstring(name));
  std::optional<std::wstring> found;
  bool inside = wantedSection.empty();
  for (const Line& line : lines_) {
    if (line.kind == Line::heading) inside = line.upper == wantedSection;
    if (line.kind == Line::value && inside && line.upper == wantedName) found = line.text;
  }
  return found;
}

void SettingsText::setValue(std::wstring_view section, std::wstring_view name, std::wstring_view value) {
  const std::wstring wantedSection = upperCased(normalSection(section)),
                     wantedName = upperCased(std::wstring(name));
  bool inside = wantedSection.empty();
  auto lastMatch = lines_.end(), lastInside = lines_.end();
  for (auto line = lines_.begin(); line != lines_.end(); ++line) {
    if (line->kind == Line::heading) inside = line->upper == wantedSection;
    if (!inside) continue;
    if (line->kind != Line::other) lastInside = line;
    if (line->kind == Line::value && line->upper == wantedName) lastMatch = line;
  }
  if (lastMatch != lines_.end()) {
    *lastMatch = valueLine(lastMatch->name, value);
  } else if (lastInside != lines_.end()) {
    lines_.insert(lastInside + 1, valueLine(name, value));
  } else if (wantedSection.empty()) {
    lines_.insert(lines_.begin(), valueLine(name, value));
  } else {
    lines_.push_back(headingLine(section));
    lines_.push_back(valueLine(name, value));
  }
}

void SettingsText::addSection(std::wstring_view section) {
  if (!hasSection(section)) lines_.push_back(headingLine(section));
}

std::vector<std::wstring> SettingsText::subsections(std::wstring_view section) const {
  const std::wstring outer = upperCased(normalSection(section));
  const size_t start = outer.empty() ? 0 : outer.size() + 1;
  std::vector<std::wstring> names;
  for (const Line& line : lines_) {
    if (line.kind != Line::heading || line.name.empty() || !isInside(line.upper, outer)) continue;
    const std::wstring name = line.name.substr(start, line.name.find(L'\\', start) - start);
    const bool known = std::any_of(names.begin(), names.end(), [&](const std::wstring& each) {
      return upperCased(each) == upperCased(name);
    });
    if (!known && !name.empty()) names.push_back(name);
  }
  std::sort(names.begin(), names.end(),
            [](const std::wstring& a, const std::wstring& b) { return upperCased(a) < upperCased(b); });
  return names;
}

}  // namespace platform
