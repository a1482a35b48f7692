#include "host/app/idle.h"

#include "host/app/memory_reserve.h"
#include "host/app/typed_line.h"
#include "host/bridge/document_lisp.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/lisp/printer.h"
#include "host/rx/editor.h"
#include "platform/desktop/desktop.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// What a sent text may send in its turn is run as well, but not without end.
constexpr int mostTexts = 1000;

std::function<void()>& idleWork() {
  static std::function<void()> work;
  return work;
}

void runLine(const std::wstring& line, bool echo) {
  try {
    const auto value = lisp::withMemoryErrors([&] { return runTypedLine(toUtf8(line)); });
    if (!echo || !value) return;
    commandLine().freshLine();
    commandLine().show(*value + L"\n");
  } catch (const lisp::LispError& error) {
    showError(error);
  }
}

void runSent(const SentText& sent) {
  AcApDocument* const former = documents().mdiActiveDocument();
  documents().activate(*sent.document);
  runLine(sent.text, sent.echo);
  // The text may have closed the document that was active before.
  for (const auto& each : documents().open()) {
    if (!sent.activate && each.get() == former) return documents().activate(*each);
  }
}

}  // namespace

std::wstring evaluate(std::string_view source, const std::wstring& fileName) {
  const DocumentManager::Busy busy(documents());
  return lisp::withMemoryErrors([&] {
    return lisp::printed(currentInterpreter().evalSource(source, fileName), lisp::Style::readable);
  });
}

void showError(const lisp::LispError& error) {
  commandLine().freshLine();
  if (!error.handled) commandLine().show(error.report() + L"\n");
}

void setIdleWork(std::function<void()> work) { idleWork() = std::move(work); }

void goIdle() {
  lisp::Interpreter::forgetEnd();
  holdMemoryReserve();
  documents().discardClosed();
  platform::desktop().runTimers();
  for (int texts = 0; texts < mostTexts; ++texts) {
    const auto sent = documents().takeSentText();
    if (!sent) break;
    runSent(*sent);
    documents().discardClosed();
  }
  editor().tellIdle();
  if (idleWork()) idleWork()();
}

}  // namespace host
