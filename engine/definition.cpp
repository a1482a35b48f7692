#include "engine/definition.h"

#include <algorithm>
#include <charconv>

#include "engine/errors/errors.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace {

struct TypeName {
  const char* name;
  jet::Type type;
  bool counter;
};

// The first name of a type is the one that descriptions use.
constexpr TypeName typeNames[] = {
    {"counter", jet::Type::Long, true},       {"autonumber", jet::Type::Long, true},
    {"long", jet::Type::Long, false},         {"integer", jet::Type::Integer, false},
    {"short", jet::Type::Integer, false},     {"byte", jet::Type::Byte, false},
    {"single", jet::Type::Single, false},     {"double", jet::Type::Double, false},
    {"currency", jet::Type::Currency, false}, {"date", jet::Type::Date, false},
    {"datetime", jet::Type::Date, false},     {"text", jet::Type::Text, false},
    {"memo", jet::Type::Memo, false},         {"yesno", jet::Type::YesNo, false},
    {"boolean", jet::Type::YesNo, false},     {"binary", jet::Type::Binary, false},
    {"guid", jet::Type::Guid, false},
};

// Words, numbers, and texts in apostrophes or parentheses, one after the other.
class Words {
 public:
  explicit Words(std::string_view text) : rest_(text) {}

  bool atEnd() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == ',')) rest_.remove_prefix(1);
    return rest_.empty();
  }
  bool take(const char* word) {
    const std::string_view before = rest_;
    if (!atEnd() && sameText(next(), word)) return true;
    rest_ = before;
    return false;
  }
  std::string next() {
    atEnd();
    size_t length = 0;
    while (length < rest_.size() && std::string_view(" (,").find(rest_[length]) == std::string_view::npos)
      ++length;
    return cut(length);
  }
  /// What stands between parentheses, if they come next.
  bool group(std::string& content) {
    if (atEnd() || rest_.front() != '(') return false;
    const size_t end = rest_.find(')');
    if (end == std::string_view::npos) fail(definitionSyntax, "a parenthesis is not closed");
    content = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    return true;
  }
  bool number(int& value) {
    if (atEnd()) return false;
    const auto read = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (read.ec != std::errc()) return false;
    rest_.remove_prefix(static_cast<size_t>(read.ptr - rest_.data()));
    return true;
  }
  std::string remainder() {
    atEnd();
    return cut(rest_.size());
  }

 private:
  std::string cut(size_t length) {
    std::string result(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return result;
  }
  std::string_view rest_;
};

DefinitionEntry readColumn(const std::string& name, Words words) {
  DefinitionEntry entry;
  jet::Column& column = entry.column;
  column.name = name;
  const std::string typeName = words.next();
  const auto* type = std::find_if(std::begin(typeNames), std::end(typeNames),
                                  [&](const TypeName& each) { return sameText(each.name, typeName); });
  if (type == std::end(typeNames))
    fail(definitionSyntax, "the field " + name + " has no type named '" + typeName + "'");
  column.type = type->type;
  column.counter = type->counter;
  std::string size;
  if (words.group(size)) {
    Words inner(size);
    if (!inner.number(column.size)) fail(definitionSyntax, "the size of the field " + name);
  } else {
    words.number(column.size);
  }
  if (column.size < 0 || (column.type == jet::Type::Text && column.size > 255)) {
    fail(definitionSyntax, "the size of the field " + name);
  }
  while (!words.atEnd()) {
    if (words.take("required")) {
      column.required = true;
    } else if (words.take("noempty")) {
      column.emptyAllowed = false;
    } else if (words.take("default")) {
      column.defaultValue = words.remainder();
    } else {
      fail(definitionSyntax, "'" + words.next() + "' at the field " + name);
    }
  }
  return entry;
}

DefinitionEntry readIndex(const std::string& name, Words words) {
  DefinitionEntry entry;
  entry.kind = DefinitionEntry::Kind::Index;
  entry.index.name = name;
  std::string columns;
  entry.index.columns = readIndexColumns(words.group(columns) ? columns : name);
  while (!words.atEnd()) {
    if (words.take("unique")) {
      entry.index.unique = true;
    } else if (words.take("primary")) {
      entry.index.primary = entry.index.unique = true;
    } else if (words.take("required")) {
      entry.index.required = true;
    } else if (words.take("ignorenull")) {
      entry.index.ignoreNull = true;
    } else {
      fail(definitionSyntax, "'" + words.next() + "' at the index " + name);
    }
  }
  return entry;
}

DefinitionEntry readEntry(const std::string& name, const std::string& description) {
  Words words(description);
  DefinitionEntry entry;
  entry.name = name;
  if (words.take("index")) return readIndex(name, words);
  if (words.take("drop")) {
    entry.kind = words.take("index") ? DefinitionEntry::Kind::DropIndex : DefinitionEntry::Kind::DropColumn;
    return entry;
  }
  if (words.take("rename")) {
    entry.kind = DefinitionEntry::Kind::RenameColumn;
    entry.newName = words.remainder();
    return entry;
  }
  return readColumn(name, words);
}

std::string textOf(const VARIANT& value) {
  COleVariant text;
  if (FAILED(VariantChangeType(&text, &value, 0, VT_BSTR)))
    fail(definitionSyntax, "a value is neither text nor number");
  return toUtf8(text.text());
}

}  // namespace

std::string describeColumn(const jet::Column& column) {
  const auto* type = std::find_if(std::begin(typeNames), std::end(typeNames), [&](const TypeName& each) {
    return each.type == column.type && each.counter == column.counter;
  });
  std::string result = type == std::end(typeNames) ? "text" : type->name;
  if (column.size > 0) result += "(" + std::to_string(column.size) + ")";
  if (column.required) result += " required";
  if (!column.emptyAllowed) result += " noempty";
  if (!column.defaultValue.empty()) result += " default " + column.defaultValue;
  return result;
}

std::vector<jet::IndexColumn> readIndexColumns(std::string_view list) {
  std::vector<jet::IndexColumn> result;
  while (!list.empty()) {
    const size_t end = std::min(list.find(','), list.size());
    std::string name(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of(' ') + 1);
    bool descending = false;
    for (const auto& [ending, down] : {std::pair{" DESC", true}, std::pair{" ASC", false}}) {
      const std::string_view tail = ending;
      if (name.size() <= tail.size() ||
          !sameText(std::string_view(name).substr(name.size() - tail.size()), tail))
        continue;
      name.erase(name.size() - tail.size());
      name.erase(name.find_last_not_of(' ') + 1);
      descending = down;
      break;
    }
    if (name.empty()) fail(definitionSyntax, "an index's field has no name");
    result.push_back({name, descending});
  }
  return result;
}

std::vector<DefinitionEntry> readDefinition(const VARIANT& definition) {
  std::vector<DefinitionEntry> entries;
  std::string name, description;
  bool open = false, named = false;
  int depth = 0;
  for (const VARIANT& value : VariantElements(definition)) {
    const std::string text = value.vt == VT_EMPTY ? "" : textOf(value);
    if (text == "*RTLB*") {
      ++depth;
      open = true;
      named = false;
      description.clear();
    } else if (text == "*RTLE*") {
      // The end of an entry, or of the list around them.
      if (open && named) entries.push_back(readEntry(name, description));
      open = named = false;
      if (--depth < 0) fail(definitionSyntax, "a list ends that didn't begin");
    } else if (text == "*RTDOTE*") {
      continue;
    } else if (!open) {
      fail(definitionSyntax, "'" + text + "' stands outside of a list");
    } else if (!named) {
      name = text;
      named = true;
    } else {
      description += (description.empty() ? "" : " ") + text;
    }
  }
  if (depth != 0) fail(definitionSyntax, "a list is not ended");
  return entries;
}
