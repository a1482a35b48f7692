#include "host/commands/command_input.h"

#include "host/console/command_line.h"
#include "host/documents/variables.h"
#include "host/editor/drawing_state.h"
#include "host/editor/user_input.h"

namespace host {
namespace {

bool isOn(const wchar_t* variable) {
  const auto value = getVariable(variable);
  const int* const number = value ? std::get_if<int>(&*value) : nullptr;
  return !number || *number != 0;
}

}  // namespace

void CommandInput::prompt(const std::wstring& text) {
  prompted_ = text;
  if (isOn(L"CMDECHO")) show(text);
}

void CommandInput::say(const std::wstring& text) {
  if (isOn(L"CMDECHO")) tell(text);
}

void CommandInput::fail(const std::wstring& reason) {
  tell(L"\n" + reason);
  throw CommandFailed();
}

InputItem CommandInput::take(const Request& request) {
  Argument argument = std::move(arguments.front());
  arguments.pop_front();
  if (!argument) {
    if (isOn(L"CMDECHO")) {
      userInput().promptShown(prompted_);
    } else {
      userInput().prompt(prompted_);
    }
    argument = userInput().take(request);
  }
  if (std::holds_alternative<Cancel>(*argument)) throw CommandCancelled();
  return std::move(*argument);
}

Task<Answer> CommandInput::point(std::wstring prompt, std::optional<AcGePoint3d> base, std::wstring keywords,
                                 int bits) {
  return acquire(*this, {Wanted::point, std::move(prompt), base, {bits, KeywordList(keywords)}});
}

Task<Answer> CommandInput::number(Wanted wanted, std::wstring prompt, std::optional<AcGePoint3d> base,
                                  std::wstring keywords, int bits) {
  return acquire(*this, {wanted, std::move(prompt), base, {bits, KeywordList(keywords)}});
}

Task<Answer> CommandInput::keyword(std::wstring prompt, std::wstring keywords) {
  return acquire(*this, {Wanted::keyword, std::move(prompt), {}, {0, KeywordList(keywords)}});
}

Task<std::wstring> CommandInput::text(std::wstring prompt) {
  Request request{Wanted::text, std::move(prompt), {}, {}};
  const Answer answer = co_await acquire(*this, std::move(request));
  co_return answer.text;
}

Task<Entities> CommandInput::objects() {
  DrawingState* const state = currentState();
  if (state && !state->chosenBefore.empty() && isOn(L"PICKFIRST")) {
    const Entities chosen = std::exchange(state->chosenBefore, {});
    co_return chosen;
  }
  SelectionWish wish;
  wish.refuseLocked = true;
  const Selected selected = co_await selectEntities(*this, std::move(wish));
  co_return selected.set.entities();
}

}  // namespace host
