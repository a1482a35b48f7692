#include "brx/lisp_calls.h"
#include "zarbo/dialogs/dialog_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/widgets/dialog.h"

namespace {

constexpr int textEdit = 1000;
const std::wstring ownTitle = L"Edit Text";

/// Blindly, so that a text that holds CR LF already comes back as it was.
std::wstring replaced(const std::wstring& text, std::wstring_view what, std::wstring_view by) {
  std::wstring result;
  size_t at = 0;
  for (size_t found; (found = text.find(what, at)) != std::wstring::npos; at = found + what.size()) {
    result.append(text, at, found - at).append(by);
  }
  return result.append(text, at);
}

}  // namespace

int edEditMultilineText() {
  acedRetNil();
  LispArgs args;
  std::wstring text, title;
  if (!getString(args.cursor, text)) return wrongType;
  platform::Form form(getString(args.cursor, title) ? title : ownTitle, L"kv_zarbo:EditMultilineText");
  form.addMultiLineEdit(textEdit, replaced(text, L"\n", L"\r\n")).size(60, 12);
  form.addOkAndCancel();
  form.setLayout(platform::column({textEdit, platform::okAndCancelInTheMiddle()}));
  form.onStart = [&] {
    form.setFocus(textEdit);
    form.selectText(textEdit);
  };
  if (runModuleDialog(form) == platform::okButton)
    acedRetStr(replaced(form.text(textEdit), L"\r\n", L"\n").c_str());
  return done;
}
