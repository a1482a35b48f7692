#include <algorithm>
#include <filesystem>
#include <system_error>

#include "host/lisp/builtins.h"
#include "host/lisp/file_handle.h"
#include "host/lisp/wildcard.h"
#include "platform/text/utf.h"

namespace lisp {
namespace {

namespace fs = std::filesystem;

/// Paths come with either separator.
fs::path toPath(std::wstring text) {
  std::replace(text.begin(), text.end(), L'\\', L'/');
  return toUtf8(text);
}

Value textValue(const fs::path& path) { return Value(std::wstring_view(fromUtf8(path.string()))); }
Value textValue(std::wstring_view text) { return Value(text); }

Value open(const Call& call) {
  const std::wstring mode = lowerCased(call.text(1).substr(0, 1));
  const char* const flags = mode == L"r" ? "rb" : mode == L"w" ? "wb" : mode == L"a" ? "ab" : nullptr;
  if (!flags) throw LispError(L"bad argument value: open mode \"" + call.text(1) + L"\"");
  std::FILE* const file = std::fopen(toPath(call.text(0)).c_str(), flags);
  return file ? Value(new FileHandle(file, call.text(0))) : Value();
}

Value close(const Call& call) {
  FileHandle& file = openFile(call[0]);
  if (const int problem = file.close()) tellFileProblem(call.lisp, file.name, problem);
  return {};
}

Value readLine(const Call& call) {
  if (!call.has(0) || call[0].isNil()) {
    const auto line = call.lisp.services().readLine();
    return line ? textValue(std::wstring_view(*line)) : Value();
  }
  std::FILE* const file = openFile(call[0]).file;
  std::string line;
  int c = std::fgetc(file);
  if (c == EOF) return {};
  for (; c != EOF && c != '\n'; c = std::fgetc(file)) line += static_cast<char>(c);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return textValue(std::wstring_view(fromUtf8(line)));
}

/// One character of UTF-8; a line's end in either form is 10.
Value readChar(const Call& call) {
  if (!call.has(0) || call[0].isNil()) return {};
  std::FILE* const file = openFile(call[0]).file;
  int c = std::fgetc(file);
  if (c == '\r') {
    c = std::fgetc(file);
    if (c != '\n' && c != EOF) std::ungetc(c, file), c = '\r';
  }
  if (c == EOF) return {};
  std::string bytes(1, static_cast<char>(c));
  for (int more = (c & 0xE0) == 0xC0   ? 1
                  : (c & 0xF0) == 0xE0 ? 2
                  : (c & 0xF8) == 0xF0 ? 3
                                       : 0;
       more > 0; --more) {
    const int next = std::fgetc(file);
    if (next == EOF) break;
    bytes += static_cast<char>(next);
  }
  return static_cast<int32_t>(fromUtf8(bytes)[0]);
}

Value findfile(const Call& call) {
  const auto path = call.lisp.services().findFile(call.text(0));
  return path ? textValue(std::wstring_view(*path)) : Value();
}

// Behind the last separator, without what stands behind its last point.
size_t nameStart(const std::wstring& path) {
  const size_t slash = path.find_last_of(L"/\\");
  return slash == std::wstring::npos ? 0 : slash + 1;
}

size_t extensionStart(const std::wstring& path) {
  const size_t dot = path.rfind(L'.');
  return dot == std::wstring::npos || dot < nameStart(path) ? path.size() : dot;
}

Value filenameBase(const Call& call) {
  const std::wstring& path = call.text(0);
  const size_t start = nameStart(path);
  return textValue(std::wstring_view(path).substr(start, extensionStart(path) - start));
}

Value filenameDirectory(const Call& call) {
  const std::wstring& path = call.text(0);
  const size_t start = nameStart(path);
  return textValue(std::wstring_view(path).substr(0, start > 1 ? start - 1 : start));
}

Value filenameExtension(const Call& call) {
  const std::wstring& path = call.text(0);
  const size_t dot = extensionStart(path);
  return dot == path.size() ? Value() : textValue(std::wstring_view(path).substr(dot));
}

// Pattern "name.ext" and folder are optional: a name that no file has and that wasn't given out before.
Value filenameMktemp(const Call& call) {
  static int number = 0;  // of the process, in which no name is given out twice
  fs::path pattern = call.has(0) && call[0].isTrue() ? toPath(call.text(0)) : fs::path("$VL~~");
  std::error_code problem;
  fs::path folder = call.has(1) && call[1].isTrue() ? toPath(call.text(1)) : pattern.parent_path();
  if (folder.empty()) folder = fs::temp_directory_path(problem);
  std::string extension = pattern.extension().string();
  if (call.has(2) && call[2].isTrue()) extension = toUtf8(call.text(2));
  while (number < 1000000) {
    ++number;
    char digits[16];
    std::snprintf(digits, sizeof digits, "%03d", number);
    const fs::path candidate = folder / (pattern.stem().string() + digits + extension);
    if (!fs::exists(candidate, problem)) return textValue(candidate);
  }
  return {};
}

/// With a third argument that is true, the copy is appended.
Value fileCopy(const Call& call) {
  const fs::path from = toPath(call.text(0)), to = toPath(call.text(1));
  std::error_code problem;
  const bool append = call.has(2) && call[2].isTrue();
  const auto size = fs::file_size(from, problem);
  if (problem || fs::equivalent(from, to, problem)) return {};
  if (!append) {
    const bool isNew = !fs::exists(to, problem);
    if (fs::copy_file(from, to, fs::copy_options::none, problem)) return static_cast<int32_t>(size);
    if (!isNew || !problem) return {};
    tellFileProblem(call.lisp, call.text(1), problem.value());
    fs::remove(to, problem);
    return {};
  }
  std::FILE* const source = std::fopen(from.c_str(), "rb");
  std::FILE* const target = std::fopen(to.c_str(), "ab");
  bool whole = source && target;
  char buffer[65536];
  for (size_t got; whole && (got = std::fread(buffer, 1, sizeof buffer, source)) > 0;) {
    whole = std::fwrite(buffer, 1, got, target) == got;
  }
  int reason = whole ? 0 : errno;
  if (source) std::fclose(source);
  if (target && std::fclose(target) != 0) reason = errno;
  if (reason == 0) return Value(static_cast<int32_t>(size));
  tellFileProblem(call.lisp, call.text(1), reason);
  return {};
}

Value fileDelete(const Call& call) {
  std::error_code problem;
  const fs::path path = toPath(call.text(0));
  return call.lisp.truth(!fs::is_directory(path, problem) && fs::remove(path, problem));
}

Value fileRename(const Call& call) {
  std::error_code problem;
  const fs::path to = toPath(call.text(1));
  if (fs::exists(to, problem)) return {};
  fs::rename(toPath(call.text(0)), to, problem);
  return call.lisp.truth(!problem);
}

Value fileSize(const Call& call) {
  std::error_code problem;
  const auto size = fs::file_size(toPath(call.text(0)), problem);
  if (problem) return fs::is_directory(toPath(call.text(0)), problem) ? Value(0) : Value();
  return size <= INT32_MAX ? Value(static_cast<int32_t>(size)) : Value(static_cast<double>(size));
}

Value fileDirectoryP(const Call& call) {
  std::error_code problem;
  return call.lisp.truth(fs::is_directory(toPath(call.text(0)), problem));
}

// Third argument: 1 files alone, -1 folders alone, 0 or none both.
Value directoryFiles(const Call& call) {
  std::error_code problem;
  const fs::path folder = call.has(0) && call[0].isTrue() ? toPath(call.text(0)) : fs::current_path(problem);
  std::wstring pattern = call.has(1) && call[1].isTrue() ? upperCased(call.text(1)) : L"*";
  if (pattern == L"*.*") pattern = L"*";
  const int32_t kind = call.has(2) && call[2].isTrue() ? call.integer(2) : 0;
  std::vector<std::wstring> names;
  if (kind <= 0 && pattern == L"*" && fs::is_directory(folder, problem)) names = {L".", L".."};
  for (fs::directory_iterator at(folder, problem), end; !problem && at != end; at.increment(problem)) {
    const bool isFolder = at->is_directory(problem);
    const std::wstring name = fromUtf8(at->path().filename().string());
    if ((kind > 0 && isFolder) || (kind < 0 && !isFolder)) continue;
    if (matchesWildcard(upperCased(name), pattern)) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  ListBuilder list;
  for (const std::wstring& name : names) list.add(textValue(std::wstring_view(name)));
  return list.take();
}

Value mkdir(const Call& call) {
  std::error_code problem;
  return call.lisp.truth(fs::create_directory(toPath(call.text(0)), problem));
}

}  // namespace

std::span<const Builtin> fileBuiltins() {
  static const Builtin table[] = {
      {L"OPEN", open, 2, 3},
      {L"CLOSE", close, 1, 1},
      {L"READ-LINE", readLine, 0, 1},
      {L"READ-CHAR", readChar, 0, 1},
      {L"FINDFILE", findfile, 1, 1},
      {L"VL-FILENAME-BASE", filenameBase, 1, 1},
      {L"VL-FILENAME-DIRECTORY", filenameDirectory, 1, 1},
      {L"VL-FILENAME-EXTENSION", filenameExtension, 1, 1},
      {L"VL-FILENAME-MKTEMP", filenameMktemp, 0, 3},
      {L"VL-FILE-COPY", fileCopy, 2, 3},
      {L"VL-FILE-DELETE", fileDelete, 1, 1},
      {L"VL-FILE-RENAME", fileRename, 2, 2},
      {L"VL-FILE-SIZE", fileSize, 1, 1},
      {L"VL-FILE-DIRECTORY-P", fileDirectoryP, 1, 1},
      {L"VL-DIRECTORY-FILES", directoryFiles, 0, 3},
      {L"VL-MKDIR", mkdir, 1, 1},
  };
  return table;
}

}  // namespace lisp
