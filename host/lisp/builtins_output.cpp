#include "host/lisp/builtins.h"
#include "host/lisp/file_handle.h"
#include "host/lisp/printer.h"
#include "platform/text/utf.h"

namespace lisp {

FileHandle& openFile(const Value& value) {
  auto* const file = value.type() == Type::opaque ? dynamic_cast<FileHandle*>(value.opaque()) : nullptr;
  if (!file || !file->file) failType(L"streamp", value);
  return *file;
}

void tellFileProblem(Interpreter& lisp, const std::wstring& file, int problem) {
  lisp.services().setVariable(L"ERRNO", problem);
  lisp.services().print(L"\n" + file + L": " + fromUtf8(std::strerror(problem)) + L"\n");
}

namespace {

/// To the file of argument `place`, or to the command line when there is none. `written` is the answer, nil
/// when the file took no more.
Value write(const Call& call, size_t place, std::wstring_view text, const Value& written) {
  if (!call.has(place) || call[place].isNil()) {
    call.lisp.services().print(text);
    return written;
  }
  FileHandle& file = openFile(call[place]);
  const std::string bytes = toUtf8(text);
  if (std::fwrite(bytes.data(), 1, bytes.size(), file.file) == bytes.size()) return written;
  tellFileProblem(call.lisp, file.name, errno);
  return {};
}

// Without arguments these print nothing and give a symbol with an empty name.
Value silence(const Call& call) { return Value(call.lisp.intern(L"")); }

Value princ(const Call& call) {
  if (!call.has(0)) return silence(call);
  return write(call, 1, printed(call[0], Style::plain), call[0]);
}

Value prin1(const Call& call) {
  if (!call.has(0)) return silence(call);
  return write(call, 1, printed(call[0], Style::readable), call[0]);
}

Value print(const Call& call) {
  if (!call.has(0)) return silence(call);
  return write(call, 1, L"\n" + printed(call[0], Style::readable) + L" ", call[0]);
}

Value prompt(const Call& call) {
  call.lisp.services().print(call.text(0));
  return {};
}

Value terpri(const Call& call) {
  call.lisp.services().print(L"\n");
  return {};
}

Value writeLine(const Call& call) { return write(call, 1, call.text(0) + L"\n", call[0]); }

Value writeChar(const Call& call) {
  const wchar_t c = characterOf(call[0]);
  return write(call, 1, std::wstring_view(&c, 1), call[0]);
}

Value toPlainText(const Call& call) { return Value(std::wstring_view(printed(call[0], Style::plain))); }
Value toReadableText(const Call& call) { return Value(std::wstring_view(printed(call[0], Style::readable))); }

}  // namespace

std::span<const Builtin> outputBuiltins() {
  static const Builtin table[] = {
      {L"PRINC", princ, 0, 2},
      {L"PRIN1", prin1, 0, 2},
      {L"PRINT", print, 0, 2},
      {L"PROMPT", prompt, 1, 1},
      {L"TERPRI", terpri, 0, 0},
      {L"WRITE-LINE", writeLine, 1, 2},
      {L"WRITE-CHAR", writeChar, 1, 2},
      {L"VL-PRINC-TO-STRING", toPlainText, 1, 1},
      {L"VL-PRIN1-TO-STRING", toReadableText, 1, 1},
  };
  return table;
}

}  // namespace lisp
