#include "zarbo/dialogs/dialog_functions.h"
#include "zarbo/dialogs/submit_bug.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

/// False when the list holds anything but texts. Empty ones are skipped.
bool readAttachments(ArgCursor& cursor, std::vector<std::wstring>& files) {
  if (!skipListBegin(cursor)) return true;
  while (!skipListEnd(cursor)) {
    std::wstring file;
    if (!getString(cursor, file)) return false;
    if (!file.empty()) files.push_back(file);
  }
  return true;
}

}  // namespace

int kvSubmitBug() {
  acedRetNil();
  LispArgs args;
  ReportRequest request;
  std::wstring workFolder;
  if (!getLong(args.cursor, request.mode) || !getString(args.cursor, request.zipSuffix) ||
      !getString(args.cursor, workFolder) || !getString(args.cursor, request.trailer) ||
      !readAttachments(args.cursor, request.attachments))
    return wrongType;
  StepLog log(workFolder + L"kv_submit.log");
  CSubmitBug(std::move(request), log).doModal();
  return done;
}
