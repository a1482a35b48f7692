#include "host/editor/user_input.h"

#include <cstdio>

#include "brx/db_calls.h"
#include "host/bridge/document_lisp.h"
#include "host/bridge/values.h"
#include "host/console/command_line.h"
#include "host/lisp/printer.h"
#include "host/root/host.h"
#include "host/script/queues.h"
#include "platform/desktop/desktop.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using lisp::Value;

std::unique_ptr<Person>& currentPerson() { return theOne<std::unique_ptr<Person>>(); }

class TypingPerson final : public Person {
 public:
  explicit TypingPerson(LineReader reader) : read_(std::move(reader)) {}
  InputItem next(const Request&) override {
    auto line = read_();
    if (!line) return Cancel{};
    return Typed{std::move(*line)};
  }

 private:
  LineReader read_;
};

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

std::optional<Moved> movedTo(const Value& list) {
  const Value first = lisp::car(list);
  if (!first.isSymbol() || first.symbol()->name != L"MOVE" || !lisp::cdr(list).isCons()) return std::nullopt;
  const Value to = lisp::car(lisp::cdr(list));
  const auto point = to.isCons() ? pointOf(to) : std::nullopt;
  return point ? std::optional(Moved{*point}) : std::nullopt;
}

Entities entitiesOf(const PickSet& picks) {
  const SelectionSet* const set = selectionSets().find(picks.number);
  return set ? set->entities() : Entities();
}

InputItem itemOfList(const Value& list) {
  if (const auto point = pointOf(list)) return *point;
  if (const auto moved = movedTo(list)) return *moved;
  if (auto picks = picksOf(list)) return std::move(*picks);
  return Typed{lisp::printed(list, lisp::Style::readable)};
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

Person* person() {
  Person* const present = currentPerson().get();
  return present && present->isPresent() ? present : nullptr;
}
bool isOnScreen() { return currentPerson() && currentPerson()->hasScreen(); }
void setPerson(std::unique_ptr<Person> next) { currentPerson() = std::move(next); }
void setLineReader(LineReader reader) { setPerson(std::make_unique<TypingPerson>(std::move(reader))); }

void UserInput::prompt(const std::wstring& text) {
  show(text);
  promptShown(text);
}

void UserInput::promptShown(const std::wstring& text) {
  scriptQueues().prompts.push_back(text);
  shown_ = text;
}

void UserInput::say(const std::wstring& text) { tell(text); }

InputItem UserInput::take(const Request& request) {
  platform::desktop().runTimers();
  auto& queue = scriptQueues().input;
  while (!queue.empty()) {
    const Value first = std::move(queue.front());
    queue.pop_front();
    InputItem item = itemOf(first);
    if (request.followsCursor || !std::holds_alternative<Moved>(item)) return item;
  }
  if (person() || !typedAhead_.empty()) return takeFromPerson(request);
  const size_t begin = shown_.find_first_not_of(L"\r\n");
  std::fprintf(stderr, "zarbo-host: nobody answers \"%s\": cancelled\n",
               toUtf8(begin == std::wstring::npos ? L"" : shown_.substr(begin)).c_str());
  return Cancel{};
}

bool UserInput::endsSelection() const { return scriptQueues().input.empty() && !person(); }

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

/// A LISP form, or "!" and a symbol, stands for its value. Nothing after an error, which is told.
std::optional<InputItem> UserInput::evaluated(const std::wstring& line) {
  const std::wstring source = line[0] == L'!' ? line.substr(1) : line;
  try {
    return itemOf(currentInterpreter().evalSource(toUtf8(source), L""));
  } catch (const lisp::LispError& error) {
    if (!error.handled) tell(L"\n" + error.report());
    return std::nullopt;
  }
}

InputItem UserInput::takeFromPerson(const Request& request) {
  if (!typedAhead_.empty()) return typedItem(std::exchange(typedAhead_, {}), request.wanted);
  while (true) {
    InputItem given = person()->next(request);
    Typed* const line = std::get_if<Typed>(&given);
    if (!line) return given;
    const bool isForm = line->text.starts_with(L'(') || line->text.starts_with(L'!');
    if (!isForm || request.wanted == Wanted::text) return typedItem(std::move(line->text), request.wanted);
    if (auto item = evaluated(line->text)) return std::move(*item);
    show(shown_);
  }
}

UserInput& userInput() { return theOne<UserInput>(); }

}  // namespace host
