#include "host/script/script_functions.h"

#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/rx/modules.h"
#include "host/script/dialog_values.h"
#include "host/script/queues.h"
#include "platform/com/call_trace.h"
#include "platform/desktop/scripted.h"
#include "platform/text/utf.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

Value text(std::wstring_view value) { return Value(value); }

// Command line

Value output(const Call& call) {
  if (call.has(0) && call[0].isNil()) {
    commandLine().takeRecord();
    commandLine().setShown(true);
    return {};
  }
  if (scriptQueues().transcript) commandLine().setShown(false);
  return text(commandLine().takeRecord());
}

// Documents

Document& named(const Call& call) {
  Document* const found = documents().find(call.text(0));
  if (!found) call.lisp.fail(L"no open document: " + call.text(0));
  return *found;
}

void requireNoDrag(const Call& call) {
  if (documents().isHeld()) {
    call.lisp.fail(L"documents can't be opened, closed or switched while something is dragged");
  }
}

Value newDocument(const Call& call) {
  requireNoDrag(call);
  return text(documents().create(call.has(0) ? call.text(0) : L"").fileName());
}

Value openDocument(const Call& call) {
  requireNoDrag(call);
  std::wstring problem;
  const Document* const opened = documents().openFile(call.text(0), problem);
  if (!opened) call.lisp.fail(problem);
  return text(opened->fileName());
}

Value activateDocument(const Call& call) {
  requireNoDrag(call);
  Document& document = named(call);
  documents().activate(document);
  return text(document.fileName());
}

Value saveDocument(const Call& call) {
  Document* const document = documents().current();
  if (!document) call.lisp.fail(L"no open document");
  std::wstring problem;
  if (!documents().save(*document, call.has(0) ? call.text(0) : L"", problem)) call.lisp.fail(problem);
  return text(document->fileName());
}

Value closeDocument(const Call& call) {
  requireNoDrag(call);
  Document* const document = call.has(0) ? &named(call) : documents().current();
  if (!document) call.lisp.fail(L"no open document");
  documents().close(*document);
  return call.lisp.t();
}

Value listDocuments(const Call&) {
  lisp::ListBuilder names;
  for (const auto& each : documents().open()) names.add(text(each->fileName()));
  return names.take();
}

// Modules

/// With a second argument a failure is that value, else an error.
Value moduleResult(const Call& call, bool success, const wchar_t* verb) {
  if (success) return call[0];
  if (call.has(1)) return call[1];
  call.lisp.fail(std::wstring(verb) + L" failed: \"" + call.text(0) + L"\"");
}

Value loadModule(const Call& call) {
  std::wstring problem;
  const bool loaded = modules().load(call.text(0), problem);
  if (!loaded && !call.has(1)) commandLine().print(L"\n" + problem + L"\n");
  return moduleResult(call, loaded, L"ARXLOAD");
}

Value unloadModule(const Call& call) {
  std::wstring problem;
  const bool unloaded = modules().unload(call.text(0), problem);
  if (!unloaded && !call.has(1)) commandLine().print(L"\n" + problem + L"\n");
  return moduleResult(call, unloaded, L"ARXUNLOAD");
}

Value listModules(const Call&) {
  lisp::ListBuilder names;
  for (const std::wstring& each : modules().loadedFiles()) names.add(text(each));
  return names.take();
}

// Engine calls

Value traced(const VARIANT& value) {
  switch (value.vt) {
    case VT_BSTR:
      return text(viewOf(value.bstrVal));
    case VT_I2:
      return Value(int32_t{value.iVal});
    case VT_I4:
      return Value(int32_t{value.lVal});
    case VT_R8:
      return Value(value.dblVal);
    case VT_BOOL:
      return Value(int32_t{value.boolVal});
    default:
      return {};
  }
}

/// The first call switches the record on.
Value trace(const Call&) {
  setCallTrace(true);
  lisp::ListBuilder calls;
  for (const TracedCall& each : takeTracedCalls()) {
    lisp::ListBuilder one;
    one.add(text(each.method));
    for (const COleVariant& argument : each.arguments) one.add(traced(argument));
    calls.add(one.take());
  }
  return calls.take();
}

// Input

Value queueInput(const Call& call) {
  for (const Value& each : call.args) scriptQueues().input.push_back(each);
  return Value(static_cast<int32_t>(scriptQueues().input.size()));
}

Value takePrompts(const Call&) {
  lisp::ListBuilder prompts;
  for (const std::wstring& each : std::exchange(scriptQueues().prompts, {})) prompts.add(text(each));
  return prompts.take();
}

// Timers

/// Lets timers tick as if so many milliseconds had gone by.
Value runTimers(const Call& call) {
  platform::desktop().runTimers(std::chrono::steady_clock::now() +
                                std::chrono::milliseconds(call.integer(0)));
  return {};
}

// The main window, boxes and choosers

/// (text enabled meter-shown label minimum maximum position)
Value mainWindow(const Call& call) {
  const platform::Desktop::MainWindow& state = platform::desktop().mainWindow();
  lisp::ListBuilder all;
  all.add(text(state.text));
  all.add(call.lisp.truth(state.enabled));
  all.add(call.lisp.truth(state.meterShown));
  all.add(text(state.progressLabel));
  for (const int each : {state.progressMinimum, state.progressMaximum, state.progress})
    all.add(Value(int32_t{each}));
  return all.take();
}

platform::ScriptedDesktop& scripted(const Call& call) {
  platform::ScriptedDesktop* const desktop = platform::scriptedDesktop();
  if (!desktop) call.lisp.fail(L"the desktop takes no scripted answers");
  return *desktop;
}

Value queueAnswers(const Call& call) {
  for (size_t i = 0; call.has(i); ++i) {
    const platform::BoxAnswer answer = platform::answerNamed(call.text(i));
    if (answer == platform::BoxAnswer::none) call.lisp.fail(L"no answer of a box: " + call.text(i));
    scripted(call).queueAnswer(answer);
  }
  return {};
}

Value takeBoxes(const Call& call) {
  lisp::ListBuilder boxes;
  for (const auto& [box, answer] : scripted(call).takeBoxes()) {
    lisp::ListBuilder one;
    one.add(text(box.caption));
    one.add(text(box.text));
    one.add(Value(static_cast<int32_t>(box.style)));
    one.add(text(platform::nameOf(answer)));
    boxes.add(one.take());
  }
  return boxes.take();
}

Value queueFile(const Call& call) {
  scripted(call).queueFile(call[0].isNil() ? std::nullopt : std::optional(call.text(0)));
  return {};
}

Value queueDialog(const Call& call) {
  platform::FormScript script;
  for (const Value& each : call.args) script.push_back(readAction(call, each));
  scripted(call).queueDialog(std::move(script));
  return {};
}

Value queueStop(const Call& call) {
  scripted(call).queueStop();
  return {};
}

Value takeDialogLog(const Call& call) { return toLisp(call, scripted(call).takeDialogLog()); }

struct Row {
  const wchar_t* name;
  lisp::Native native;
  int fewest, most;
};

constexpr Row rows[] = {
    {L"host-output", output, 0, 1},
    {L"host-new", newDocument, 0, 1},
    {L"host-open", openDocument, 1, 1},
    {L"host-activate", activateDocument, 1, 1},
    {L"host-saveas", saveDocument, 0, 1},
    {L"host-close", closeDocument, 0, 1},
    {L"host-documents", listDocuments, 0, 0},
    {L"host-trace", trace, 0, 0},
    {L"host-input", queueInput, 0, lisp::anyCount},
    {L"host-answer", queueAnswers, 0, lisp::anyCount},
    {L"host-boxes", takeBoxes, 0, 0},
    {L"host-file", queueFile, 1, 1},
    {L"host-dialog", queueDialog, 0, lisp::anyCount},
    {L"host-dialog-log", takeDialogLog, 0, 0},
    {L"host-stop", queueStop, 0, 0},
    {L"host-prompts", takePrompts, 0, 0},
    {L"host-main-window", mainWindow, 0, 0},
    {L"host-timers", runTimers, 1, 1},
    {L"arxload", loadModule, 1, 2},
    {L"arxunload", unloadModule, 1, 2},
    {L"arx", listModules, 0, 0},
};

}  // namespace

void defineScriptFunctions(lisp::Interpreter& interpreter) {
  for (const Row& row : rows) interpreter.define(row.name, row.native, row.fewest, row.most);
}

}  // namespace host
