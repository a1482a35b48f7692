#include "zarbo/desktop/boxes.h"

#include "platform/desktop/desktop.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

constexpr int plainBeep = -1;

struct BeepWord {
  const wchar_t* word;
  int kind;
};
constexpr BeepWord beepWords[] = {{L"?", 32}, {L"*", 64}, {L"HAND", 16}, {L"!", 48}, {L"OK", 0}};

struct StyleWord {
  const wchar_t* word;
  unsigned bits;
  bool isButtons;
};
constexpr StyleWord styleWords[] = {
    {L"ABORT", platform::abortRetryIgnoreBox, true},
    {L"OK", platform::okBox, true},
    {L"OKCANCEL", platform::okCancelBox, true},
    {L"RETRYCANCEL", platform::retryCancelBox, true},
    {L"YESNO", platform::yesNoBox, true},
    {L"YESNOCANCEL", platform::yesNoCancelBox, true},
    {L"!", platform::exclamationIcon, false},
    {L"i", platform::informationIcon, false},
    {L"?", platform::questionIcon, false},
    {L"STOP", platform::stopIcon, false},
    {L"DEF2", 256, false},
    {L"DEF3", 512, false},
};

// A buttons' word wipes out the marks before it: callers put it first.
unsigned readStyle(ArgCursor& cursor) {
  unsigned style = 0;
  std::wstring word;
  skipListBegin(cursor);
  while (getString(cursor, word)) {
    for (const StyleWord& each : styleWords) {
      if (word == each.word) style = each.isButtons ? each.bits : style + each.bits;
    }
  }
  return style;
}

}  // namespace

int zbBeep() {
  platform::desktop().beep(plainBeep);
  acedRetT();
  return done;
}

int zbMessageBeep() {
  LispArgs args;
  std::wstring word;
  if (getString(args.cursor, word)) {
    int kind = plainBeep;
    for (const BeepWord& each : beepWords) {
      if (word == each.word) kind = each.kind;
    }
    platform::desktop().beep(kind);
  }
  acedRetT();
  return done;
}

int zbMessageBox() {
  acedRetNil();
  LispArgs args;
  platform::Box box;
  if (!getString(args.cursor, box.caption) || !getString(args.cursor, box.text)) return wrongType;
  box.style = readStyle(args.cursor);
  const std::wstring answer = platform::nameOf(platform::desktop().messageBox(box));
  if (!answer.empty()) acedRetStr(answer.c_str());
  return done;
}
