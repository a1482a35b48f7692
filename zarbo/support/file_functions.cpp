#include <chrono>

#include "platform/files/files.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/support/service_functions.h"

namespace {

void retFlag(bool flag) { flag ? acedRetT() : acedRetNil(); }

using FileOperation = bool (*)(const std::wstring&);
using PairOperation = bool (*)(const std::wstring&, const std::wstring&);

int applyToPath(FileOperation operation, int codeWithoutText) {
  acedRetNil();
  LispArgs args;
  std::wstring path;
  if (!getString(args.cursor, path)) return codeWithoutText;
  retFlag(operation(path));
  return done;
}

int applyToPair(PairOperation operation, bool tellMissing) {
  acedRetNil();
  LispArgs args;
  std::wstring paths[2];
  for (std::wstring& path : paths) {
    if (!args.cursor && tellMissing) return tooFewArguments;
    if (!getString(args.cursor, path)) return wrongType;
  }
  retFlag(operation(paths[0], paths[1]));
  return done;
}

// Whole seconds: finer parts of a time are lost on some file systems.
bool copyIfNewer(const std::wstring& source, const std::wstring& target) {
  using std::chrono::floor, std::chrono::seconds;
  const auto sourceTime = platform::modificationTime(source), targetTime = platform::modificationTime(target);
  return sourceTime && targetTime && floor<seconds>(*sourceTime) > floor<seconds>(*targetTime) &&
         platform::copyFile(source, target);
}

}  // namespace

int zbFcopy() { return applyToPair(platform::copyFile, true); }
int zbFcopyIfChanged() { return applyToPair(copyIfNewer, true); }
int zbFmove() { return applyToPair(platform::moveFile, false); }
int zbFdelete() { return applyToPath(platform::deleteFile, done); }
int zbMkdir() { return applyToPath(platform::makeFolder, wrongType); }
int zbRmdir() { return applyToPath(platform::removeFolder, wrongType); }

int zbFdir() {
  acedRetNil();
  LispArgs args;
  std::wstring pattern;
  if (!getString(args.cursor, pattern)) return done;
  const std::vector<std::wstring> names = platform::findFiles(pattern);
  if (names.empty()) return done;
  LispList list;
  beginList(list);
  for (const std::wstring& name : names) appendValue(list, name);
  endListAndReturn(list);
  return done;
}
