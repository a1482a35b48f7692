#include "brx/editor_input.h"
#include "platform/archive/archive_writer.h"
#include "platform/download/download.h"
#include "platform/files/files.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/support/progress_meter.h"
#include "zarbo/support/service_functions.h"

int downloadFileOf() {
  acedRetNil();
  LispArgs args;
  std::wstring url, file;
  if (!getString(args.cursor, url) || !getString(args.cursor, file)) return done;
  ProgressMeter meter(L"Downloading");
  // Nil on success, too: the caller looks for the file.
  platform::downloadFile(url, file, {}, [&](int64_t come, int64_t total) {
    meter.show(come, total);
    return !acedUsrBrk();
  });
  return done;
}

int extractZip() {
  acedRetNil();
  LispArgs args;
  std::wstring archive, folder;
  if (!getString(args.cursor, archive) || !getString(args.cursor, folder)) return done;
  platform::ArchiveWriter reader;
  if (reader.open(archive) && reader.extractAll(folder)) acedRetT();
  return done;
}

int createZip() {
  acedRetNil();
  LispArgs args;
  std::wstring archive, file;
  platform::ArchiveWriter writer;
  if (!getString(args.cursor, archive) || !writer.create(archive)) return done;
  skipListBegin(args.cursor);
  while (getString(args.cursor, file)) {
    if (!writer.append(file, false)) return done;
  }
  writer.writeAndClose();  // T whatever comes of it
  acedRetT();
  return done;
}

int getTempPath() {
  acedRetNil();
  const std::wstring folder = platform::temporaryFolder();
  if (!folder.empty()) acedRetStr(folder.c_str());
  return done;
}

int isFileReadOnly() {
  acedRetNil();
  LispArgs args;
  std::wstring path;
  if (!getString(args.cursor, path)) return wrongType;
  if (platform::isReadOnly(path)) acedRetT();
  return done;
}
