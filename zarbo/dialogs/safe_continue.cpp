#include <algorithm>

#include "brx/lisp_calls.h"
#include "platform/text/letters.h"
#include "zarbo/dialogs/dialog_functions.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/widgets/dialog.h"

namespace {

using platform::Form;

constexpr int wordEdit = 1036, messageText = 65534;
/// Letters of a line of the message.
constexpr size_t lineWidth = 75;

/// A dangerous step, which the user confirms by typing a word.
class CSafeContinue {
 public:
  CSafeContinue(const std::wstring& title, const std::wstring& message, std::wstring word);
  int doModal() { return runModuleDialog(form_); }

 private:
  void onType();
  void onOk();

  Form form_;
  std::wstring word_;
};

std::vector<std::wstring> pieces(const std::wstring& text) {
  std::vector<std::wstring> found;
  for (size_t at = 0; (at = text.find_first_not_of(L' ', at)) != std::wstring::npos;) {
    const size_t end = std::min(text.find(L' ', at), text.size());
    found.push_back(text.substr(at, end - at));
    at = end;
  }
  return found;
}

std::wstring wrapped(const std::wstring& message) {
  std::wstring result;
  size_t width = 0;
  for (const std::wstring& piece : pieces(message)) {
    // A piece with a line's end in it starts the count anew before it is measured, as a whole.
    if (piece.find(L'\n') != std::wstring::npos) width = 0;
    if (width + piece.size() > lineWidth) result += L'\n', width = 0;
    result += piece + L' ';
    width += piece.size() + 1;
  }
  return result;
}

/// Those that are not empty.
int countLines(const std::wstring& text) {
  int lines = 0;
  for (size_t at = 0; (at = text.find_first_not_of(L'\n', at)) != std::wstring::npos; ++lines) {
    at = std::min(text.find(L'\n', at), text.size());
  }
  return lines;
}

/// A label shows "&" as it is only when it is doubled.
std::wstring literal(const std::wstring& text) {
  std::wstring doubled;
  for (const wchar_t c : text) doubled.append(c == L'&' ? 2 : 1, c);
  return doubled;
}

CSafeContinue::CSafeContinue(const std::wstring& title, const std::wstring& message, std::wstring word)
    : form_(title), word_(std::move(word)) {
  const std::wstring text = wrapped(message);
  // The label is a line high in the first place and grows by one for each.
  form_.addLabel(messageText, literal(text)).size(static_cast<int>(lineWidth), 1 + countLines(text));
  form_.addEdit(wordEdit).onChange = [this] { onType(); };
  form_.addOkAndCancel();
  form_.control(platform::okButton).onPress = [this] { onOk(); };
  form_.control(platform::okButton).setEnabled(false);
  form_.setLayout(platform::column({messageText, wordEdit, platform::okAndCancel()}));
  form_.setFocus(wordEdit);
}

void CSafeContinue::onType() {
  platform::Control& edit = form_.control(wordEdit);
  edit.setText(upperCased(edit.text()));
  form_.control(platform::okButton).setEnabled(edit.text() == word_);
}

void CSafeContinue::onOk() {
  if (upperCased(form_.text(wordEdit)) == word_) {
    acedRetT();
  } else {
    acedRetNil();
  }
  form_.close();
}

}  // namespace

int kvSafeContinue() {
  LispArgs args;
  std::wstring title, message, word;
  if (!getString(args.cursor, title) || !getString(args.cursor, message) || !getString(args.cursor, word))
    return wrongType;
  CSafeContinue(title, message, upperCased(word)).doModal();
  return done;
}
