#include "host/dialogs/dialog_functions.h"

#include <algorithm>

#include "host/database/palette.h"
#include "host/dialogs/colour_dialog.h"
#include "host/dialogs/shell_words.h"
#include "host/lisp/builtins.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

constexpr int indexGroup = 62, mixedGroup = 420;
constexpr int byLayer = 256;

AcCmColor indexed(int index) {
  AcCmColor made;
  made.setColorIndex(static_cast<Adesk::UInt16>(std::clamp(index, 0, byLayer)));
  return made;
}

/// (acad_colordlg index [logical]): the index, or nil.
Value colourDialog(const Call& call) {
  const auto chosen = chooseColour({indexed(call.integer(0)), !call.has(1) || call[1].isTrue()});
  return chosen ? Value(int32_t{chosen->colorIndex()}) : Value();
}

/// ((62 . index) (420 . mixed)), or one such pair; what isn't given is by layer.
AcCmColor readColour(const Call& call, const Value& value) {
  AcCmColor colour;
  for (Value rest = value.isCons() && !lisp::car(value).isCons() ? lisp::cons(value, Value()) : value;
       rest.isCons(); rest = lisp::cdr(rest)) {
    const Value& pair = lisp::car(rest);
    if (!pair.isCons() || !lisp::car(pair).isInteger() || !lisp::cdr(pair).isInteger())
      call.lisp.fail(L"bad colour list");
    const int group = lisp::car(pair).integer(), number = lisp::cdr(pair).integer();
    if (group == indexGroup && !colour.isByColor()) colour = indexed(number);
    if (group == mixedGroup) {
      colour.setRGB(static_cast<Adesk::UInt8>(number >> 16), static_cast<Adesk::UInt8>(number >> 8),
                    static_cast<Adesk::UInt8>(number));
    }
  }
  return colour;
}

Value pair(int group, int number) { return lisp::cons(Value(int32_t{group}), Value(int32_t{number})); }

/// (acad_truecolordlg colours [logical]): the list of pairs, or nil.
Value trueColourDialog(const Call& call) {
  const auto chosen = chooseColour({readColour(call, call[0]), !call.has(1) || call[1].isTrue(), true});
  if (!chosen) return {};
  lisp::ListBuilder list;
  if (chosen->isByColor()) {
    list.add(pair(indexGroup, static_cast<int>(nearestIndex(chosen->rgb()))));
    list.add(pair(mixedGroup, static_cast<int>(chosen->rgb())));
  } else {
    list.add(pair(indexGroup, chosen->colorIndex()));
  }
  return list.take();
}

/// (startapp command [file]): 1, or nil.
Value startApp(const Call& call) {
  return startByWords(call.text(0), call.has(1) ? call.text(1) : L"") ? Value(int32_t{1}) : Value();
}

constexpr lisp::Builtin rows[] = {
    {L"acad_colordlg", colourDialog, 1, 2},
    {L"acad_truecolordlg", trueColourDialog, 1, 3},
    {L"startapp", startApp, 1, 2},
};

}  // namespace

void defineDialogFunctions(lisp::Interpreter& interpreter) {
  for (const lisp::Builtin& row : rows) interpreter.define(row.name, row.body, row.fewest, row.most);
}

}  // namespace host
