#pragma once

#include <cstdio>
#include <string>

#include "host/lisp/value.h"

namespace lisp {

/// A file that LISP reads or writes, as UTF-8; closed by `close` or with the last reference.
struct FileHandle : Opaque {
  FileHandle(std::FILE* file, std::wstring name) : file(file), name(std::move(name)) {}
  ~FileHandle() override { close(); }
  std::wstring_view typeName() const override { return L"FILE"; }
  std::wstring print() const override { return L"#<file \"" + name + L"\">"; }
  void close() {
    if (file) std::fclose(file);
    file = nullptr;
  }

  std::FILE* file;
  std::wstring name;
};

/// Raises "bad argument type: streamp" for another value and for a closed file.
FileHandle& openFile(const Value& value);

}  // namespace lisp
