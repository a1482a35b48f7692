#pragma once

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "host/lisp/value.h"
#include "platform/text/utf.h"

namespace lisp {

class Interpreter;

/// A file that LISP reads or writes, as UTF-8; closed by `close` or with the last reference.
struct FileHandle : Opaque {
  FileHandle(std::FILE* file, std::wstring name) : file(file), name(std::move(name)) {}
  /// Nobody is left who could be told otherwise.
  ~FileHandle() override {
    if (const int problem = close())
      std::fprintf(stderr, "%s: %s\n", toUtf8(name).c_str(), std::strerror(problem));
  }
  std::wstring_view typeName() const override { return L"FILE"; }
  std::wstring print() const override { return L"#<file \"" + name + L"\">"; }
  /// The system's number of what kept the rest from being written, 0 when all was.
  int close() {
    const bool stored = !file || std::fclose(std::exchange(file, nullptr)) == 0;
    return stored ? 0 : errno;
  }

  std::FILE* file;
  std::wstring name;
};

/// Raises "bad argument type: streamp" for another value and for a closed file.
FileHandle& openFile(const Value& value);

/// Tells on the command line why a file couldn't be written, and sets ERRNO to the system's number.
void tellFileProblem(Interpreter& lisp, const std::wstring& file, int problem);

}  // namespace lisp
