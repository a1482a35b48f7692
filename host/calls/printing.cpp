#include "brx/lisp_calls.h"
#include "host/calls/format.h"
#include "host/console/command_line.h"
#include "platform/desktop/desktop.h"

int acutPrintValues(const ACHAR* format, const AcutPrintValue* values, size_t count) {
  host::commandLine().print(host::formatValues(format, values, count));
  return RTNORM;
}

int acedPrompt(const ACHAR* text) {
  if (!text) return RTERROR;
  host::commandLine().print(text);
  return RTNORM;
}

int acedAlert(const ACHAR* text) {
  if (!text) return RTERROR;
  platform::desktop().messageBox({L"Message", text, platform::okBox});
  return RTNORM;
}

int acedTextScr() {
  host::commandLine().showTextWindow(true);
  return RTNORM;
}

int acedGraphScr() {
  host::commandLine().showTextWindow(false);
  return RTNORM;
}
