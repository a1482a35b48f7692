#include "host/window/window_functions.h"

#include "host/lisp/objects.h"
#include "host/window/player.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

Player& playerOf(const Call& call) { return *static_cast<Player*>(call.function.context); }

Deed::Value deedValue(const Call& call, const Value& value) {
  if (value.isNumber()) return value.number();
  if (value.isText()) return value.text();
  double numbers[3] = {};
  size_t count = 0;
  for (const Value& each : lisp::Elements(value)) {
    if (count == 3 || !each.isNumber()) call.lisp.fail(L"a deed takes numbers, texts and points");
    numbers[count++] = each.number();
  }
  if (count < 2) call.lisp.fail(L"a deed takes numbers, texts and points");
  return AcGePoint3d{numbers[0], numbers[1], numbers[2]};
}

/// (host-window "verb" value ...) lays a deed ready; (host-window) lets those that wait come where the host
/// waits for a command.
Value doDeed(const Call& call) {
  if (call.count() == 0) return playerOf(call).releaseAtIdle(), Value();
  Deed deed;
  deed.verb = call.text(0);
  for (size_t i = 1; i < call.count(); ++i) deed.values.push_back(deedValue(call, call[i]));
  Deed checked = deed;
  if (checked.verb.starts_with(L"busy ")) checked.verb.erase(0, 5);
  if (const std::wstring problem = Player::problemOf(checked); !problem.empty()) call.lisp.fail(problem);
  playerOf(call).add(std::move(deed));
  return {};
}

Value takeLog(const Call& call) {
  lisp::ListBuilder log;
  for (const Player::LogValue& each : playerOf(call).takeLog()) {
    const bool* const flag = std::get_if<bool>(&each);
    log.add(flag ? call.lisp.truth(*flag) : Value(std::wstring_view(std::get<std::wstring>(each))));
  }
  return log.take();
}

}  // namespace

void defineWindowFunctions(lisp::Interpreter& interpreter, Player& player) {
  interpreter.define(L"host-window", doDeed, 0, lisp::anyCount, &player);
  interpreter.define(L"host-window-log", takeLog, 0, 0, &player);
}

}  // namespace host
