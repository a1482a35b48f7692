#include "brx/editor_input.h"
#include "host/bridge/lisp_points.h"
#include "host/editor/acquisition.h"
#include "host/editor/editor_functions.h"
#include "host/lisp/builtins.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

Value initGet(const Call& call) {
  PromptRules rules;
  size_t place = 0;
  if (call.has(0) && call[0].isInteger()) rules.bits = call.integer(place++);
  if (call.has(place) && call[place].isTrue()) rules.keywords = KeywordList(call.text(place));
  setPromptRules(std::move(rules));
  return {};
}

/// "[base] [prompt]", in this order.
Request requestOf(const Call& call, Wanted wanted, bool takesBase) {
  Request request;
  request.wanted = wanted;
  size_t place = 0;
  if (takesBase && call.has(0) && !call[0].isText()) {
    if (call[0].isTrue()) request.base = pointArgument(call, 0);
    ++place;
  }
  if (call.has(place) && call[place].isTrue()) request.prompt = call.text(place++);
  if (call.has(place) && call[place].isTrue()) call.lisp.fail(L"too many arguments");
  request.rules = takePromptRules();
  return request;
}

/// Nil for Enter, the keyword where one was given, else what `value` makes of the answer.
template <class MakeValue>
Value result(const Call& call, const Request& request, MakeValue value) {
  const Answer answer = ask(request);
  if (answer.status == RTCAN) call.lisp.fail(L"Function cancelled");
  if (answer.status == RTKWORD) return Value(std::wstring_view(answer.text));
  return answer.given() ? value(answer) : Value();
}

Value ofPoint(const Answer& answer) { return pointValue(answer.point); }
Value ofReal(const Answer& answer) { return Value(answer.real); }
Value ofInteger(const Answer& answer) { return Value(int32_t{answer.integer}); }
Value ofText(const Answer& answer) { return Value(std::wstring_view(answer.text)); }

Value getPoint(const Call& call) { return result(call, requestOf(call, Wanted::point, true), ofPoint); }
Value getDist(const Call& call) { return result(call, requestOf(call, Wanted::distance, true), ofReal); }
Value getAngle(const Call& call) { return result(call, requestOf(call, Wanted::angle, true), ofReal); }
Value getOrient(const Call& call) { return result(call, requestOf(call, Wanted::orientation, true), ofReal); }
Value getReal(const Call& call) { return result(call, requestOf(call, Wanted::real, false), ofReal); }
Value getInt(const Call& call) { return result(call, requestOf(call, Wanted::integer, false), ofInteger); }

Value getCorner(const Call& call) {
  Request request = requestOf(call, Wanted::point, true);
  request.rubberBox = true;
  if (!request.base) lisp::failType(L"point:", call[0]);
  return result(call, request, [&](const Answer& answer) {
    return pointValue({answer.point.x, answer.point.y, request.base->z});
  });
}

/// "[blanks] [prompt]"
Value getString(const Call& call) {
  Request request{Wanted::word, L"", {}, {}};
  size_t place = 0;
  if (call.has(0) && (call.count() > 1 || !call[0].isText())) {
    if (call[0].isTrue()) request.wanted = Wanted::text;
    ++place;
  }
  if (call.has(place) && call[place].isTrue()) request.prompt = call.text(place);
  takePromptRules();
  return result(call, request, ofText);
}

Value getKeyword(const Call& call) {
  const Request request = requestOf(call, Wanted::keyword, false);
  if (request.rules.keywords.empty() && (request.rules.bits & RSG_OTHER) == 0) return {};
  return result(call, request, ofText);
}

constexpr lisp::Builtin rows[] = {
    {L"initget", initGet, 0, 2},     {L"getpoint", getPoint, 0, 2}, {L"getcorner", getCorner, 1, 2},
    {L"getdist", getDist, 0, 2},     {L"getangle", getAngle, 0, 2}, {L"getorient", getOrient, 0, 2},
    {L"getreal", getReal, 0, 1},     {L"getint", getInt, 0, 1},     {L"getstring", getString, 0, 2},
    {L"getkword", getKeyword, 0, 1},
};

}  // namespace

std::span<const lisp::Builtin> getFunctions() { return rows; }

}  // namespace host
