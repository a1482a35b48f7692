#include "host/editor/user_input.h"

#include <cstdio>

#include "brx/db_calls.h"
#include "host/bridge/document_lisp.h"
#include "host/bridge/values.h"
#include "host/console/command_line.h"
#include "host/lisp/printer.h"
#include "host/script/queues.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using lisp::Value;

LineReader& lineReader() {
  static LineReader reader;
  return reader;
}

std::optional<AcGePoint3d> pointOf(const Value& list) {
  double numbers[3] = {};
  size_t count = 0;
  for (const Value& each : lisp::Elements(list)) {
    if (count == 3 || !each.isNumber()) return std::nullopt;
    numbers[count++] = each.number();
  }
  if (count < 2) return std::nullopt;
  return AcGePoint3d{numbers[0], numbers[1], numbers[2]};
}

AcDbObjectId idOf(const Value& entity) {
  const ads_name name = {entity.entityName(), 0};
  AcDbObjectId id;
  acdbGetObjectId(id, name);
  return id;
}

bool isEntity(const Value& value) { return value.type() == lisp::Type::entity; }

/// Entity names, or an entity name with the point of its pick.
std::optional<InputItem> picksOf(const Value& list) {
  Entities entities;
  for (const Value& each : lisp::Elements(list)) {
    if (isEntity(each)) {
      entities.push_back(idOf(each));
      continue;
    }
    const auto point = pointOf(each);
    if (!point || entities.size() != 1) return std::nullopt;
    return Picked{entities.front(), point};
  }
  if (entities.empty()) return std::nullopt;
  return entities;
}

Entities entitiesOf(const PickSet& picks) {
  const SelectionSet* const set = selectionSets().find(picks.number);
  return set ? set->entities() : Entities();
}

InputItem itemOfList(const Value& list) {
  if (const auto point = pointOf(list)) return *point;
  if (auto picks = picksOf(list)) return std::move(*picks);
  return Typed{lisp::printed(list, lisp::Style::readable)};
}

/// A LISP form, or "!" and a symbol, stands for its value. Nothing after an error, which is told.
std::optional<InputItem> evaluated(const std::wstring& line) {
  const std::wstring source = line[0] == L'!' ? line.substr(1) : line;
  try {
    return itemOf(currentInterpreter().evalSource(toUtf8(source), L""));
  } catch (const lisp::LispError& error) {
    if (!error.handled) commandLine().print(L"\n; error: " + error.message);
    return std::nullopt;
  }
}

}  // namespace

InputItem itemOf(const Value& value) {
  switch (value.type()) {
    case lisp::Type::nil:
      return Enter{};
    case lisp::Type::integer:
      return Number{static_cast<double>(value.integer()), true};
    case lisp::Type::real:
      return Number{value.real(), false};
    case lisp::Type::text:
      if (value.text().empty()) return Enter{};
      return Typed{value.text()};
    case lisp::Type::entity:
      return Picked{idOf(value), std::nullopt};
    case lisp::Type::cons:
      return itemOfList(value);
    default:
      break;
  }
  if (value.isSymbol() && value.symbol()->name == L"ENTER") return Enter{};
  if (value.isSymbol() && value.symbol()->name == L"CANCEL") return Cancel{};
  if (value.type() == lisp::Type::opaque) {
    if (const auto* picks = dynamic_cast<const PickSet*>(value.opaque())) return entitiesOf(*picks);
  }
  return Typed{lisp::printed(value, lisp::Style::readable)};
}

void setLineReader(LineReader reader) { lineReader() = std::move(reader); }

void UserInput::prompt(const std::wstring& text) {
  commandLine().print(text);
  promptShown(text);
}

void UserInput::promptShown(const std::wstring& text) {
  scriptQueues().prompts.push_back(text);
  shown_ = text;
}

void UserInput::say(const std::wstring& text) { commandLine().print(text); }

InputItem UserInput::take(Wanted wanted) {
  auto& queue = scriptQueues().input;
  if (!queue.empty()) {
    const Value first = std::move(queue.front());
    queue.pop_front();
    return itemOf(first);
  }
  if (lineReader() || !typedAhead_.empty()) return takeTyped(wanted);
  const size_t begin = shown_.find_first_not_of(L"\r\n");
  std::fprintf(stderr, "zarbo-host: nobody answers \"%s\": cancelled\n",
               toUtf8(begin == std::wstring::npos ? L"" : shown_.substr(begin)).c_str());
  return Cancel{};
}

bool UserInput::endsSelection() const { return scriptQueues().input.empty() && !lineReader(); }

/// A blank ends what is typed, but in a text.
InputItem UserInput::typedItem(std::wstring line, Wanted wanted) {
  if (wanted != Wanted::text) {
    const size_t blank = line.find(L' ');
    if (blank != std::wstring::npos) {
      typedAhead_ = line.substr(blank + 1);
      line.resize(blank);
    }
  }
  if (line.empty()) return Enter{};
  return Typed{std::move(line)};
}

InputItem UserInput::takeTyped(Wanted wanted) {
  if (!typedAhead_.empty()) return typedItem(std::exchange(typedAhead_, {}), wanted);
  while (true) {
    auto line = lineReader()();
    if (!line) return Cancel{};
    const bool isForm = line->starts_with(L'(') || line->starts_with(L'!');
    if (!isForm || wanted == Wanted::text) return typedItem(std::move(*line), wanted);
    if (auto item = evaluated(*line)) return std::move(*item);
    commandLine().print(shown_);
  }
}

UserInput& userInput() {
  static UserInput instance;
  return instance;
}

}  // namespace host
