#include "host/app/typed_line.h"

#include "host/app/idle.h"
#include "host/bridge/document_lisp.h"
#include "host/commands/typed_commands.h"
#include "host/commands/undo_steps.h"
#include "host/documents/documents.h"
#include "host/editor/user_input.h"
#include "host/lisp/objects.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

std::wstring trimmed(const std::wstring& line) {
  const size_t begin = line.find_first_not_of(L" \t\r\n"), end = line.find_last_not_of(L" \t\r\n");
  return begin == std::wstring::npos ? std::wstring() : line.substr(begin, end + 1 - begin);
}

/// A variable of the program is LISP although a command has its name; a function of the host isn't.
bool isVariable(const std::wstring& line) {
  const lisp::Symbol* const symbol = currentInterpreter().find(line);
  if (!symbol || !symbol->value.isTrue()) return false;
  return !symbol->value.isFunction() || !symbol->value.function()->native;
}

bool isDefined(const std::wstring& name) {
  const lisp::Symbol* const symbol = currentInterpreter().find(name);
  return symbol && symbol->value.isFunction();
}

}  // namespace

std::optional<std::wstring> runTypedLine(const std::string& source) {
  const std::wstring line = trimmed(fromUtf8(source));
  const bool isName = line.find_first_of(L"()'\"!;\n") == std::wstring::npos && !line.empty();
  if (isName && lowerCased(line) == L"help") return evaluate("(help)", L"");
  if (isName && !isVariable(line)) {
    {
      const DocumentManager::Busy busy(documents());
      if (runTypedCommand(line)) return std::nullopt;
    }
    const size_t blank = line.find(L' ');
    const std::wstring command = L"C:" + line.substr(0, blank);
    if (isDefined(command)) {
      // What the command doesn't ask for is nobody else's.
      struct TypedAhead {
        explicit TypedAhead(std::wstring text) { userInput().typeAhead(std::move(text)); }
        ~TypedAhead() { userInput().typeAhead({}); }
      } ahead(blank == std::wstring::npos ? std::wstring() : line.substr(blank + 1));
      const UndoGroup oneStep;
      return evaluate("(" + toUtf8(command) + ")", L"");
    }
  }
  const UndoGroup oneStep;
  return evaluate(source, L"");
}

}  // namespace host
