#include "host/app/batch.h"

#include "host/app/idle.h"
#include "host/bridge/source_text.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/lisp/reader.h"
#include "host/script/queues.h"
#include "platform/text/utf.h"

namespace host {
namespace {

void showLine(const std::wstring& text) {
  commandLine().freshLine();
  commandLine().show(text + L"\n");
}

std::wstring resultOf(std::string_view form, const std::wstring& fileName) {
  try {
    return evaluate(form, fileName);
  } catch (const lisp::LispError& error) {
    return L"; error: " + error.message;
  }
}

void runForm(std::string_view form, const std::wstring& fileName) {
  showLine(L"> " + fromUtf8(form));
  const std::wstring result = resultOf(form, fileName);
  showLine(L"=> " + result);
  goIdle();
}

}  // namespace

void runBatch(const std::string& bytes, const std::wstring& fileName) {
  const std::string source = sourceAsUtf8(bytes, fileName);
  scriptQueues().transcript = true;
  // Forms are cut out by an interpreter of its own, since each may go to another document's LISP.
  lisp::Services services;
  lisp::Interpreter cutter(services);
  lisp::Reader reader(cutter, source, fileName);
  while (true) {
    try {
      if (!reader.next()) return;
    } catch (const lisp::LispError& error) {
      showLine(L"=> ; error: " + error.message);
      reader.skipLine();
      continue;
    }
    runForm(reader.formText(), fileName);
  }
}

}  // namespace host
