#include "host/editor/acquisition.h"

#include "brx/editor_input.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/interpretation.h"
#include "host/editor/user_input.h"
#include "host/root/host.h"

namespace host {
namespace {

/// Between one call of a module and the next.
struct BetweenPrompts {
  PromptRules rules;
  std::wstring keyword;
};

PromptRules& promptRules() { return theOne<BetweenPrompts>().rules; }
std::wstring& keyword() { return theOne<BetweenPrompts>().keyword; }

}  // namespace

void keepLastPoint(const AcGePoint3d& point) { setVariable(L"LASTPOINT", Point{point.x, point.y, point.z}); }

PromptRules takePromptRules() { return std::exchange(promptRules(), {}); }
void setPromptRules(PromptRules rules) { promptRules() = std::move(rules); }
const std::wstring& lastKeyword() { return keyword(); }
void setLastKeyword(std::wstring text) { keyword() = std::move(text); }

Task<Answer> acquire(InputSource& source, Request request) {
  while (true) {
    source.prompt(request.prompt);
    const InputItem item = co_await NextInput{source, request};
    const auto meaning = interpret(request, item, CoordinateRules::current());
    if (const auto* refusal = std::get_if<Refusal>(&meaning)) {
      source.say(L"\n" + refusal->message);
    } else if (const auto* first = std::get_if<FirstPoint>(&meaning)) {
      keepLastPoint(first->point);
      request.base = first->point;
      request.prompt = L"\nSpecify second point: ";
    } else {
      const Answer& answer = std::get<Answer>(meaning);
      if (answer.status == RTKWORD) setLastKeyword(answer.text);
      if (answer.given() && answer.pointGiven) keepLastPoint(answer.point);
      co_return answer;
    }
  }
}

Answer ask(Request request) {
  const DocumentManager::Busy busy(documents());
  Task<Answer> task = acquire(userInput(), std::move(request));
  task.start();
  return task.result();
}

}  // namespace host
