#include "zarbo/dialogs/attachment_dialog.h"

#include "platform/desktop/desktop.h"
#include "zarbo/support/paths.h"
#include "zarbo/widgets/dialog.h"

namespace {

using namespace platform;

enum Number { addButton = 1063, removeButton = 4, fileList = 1064 };

const std::vector<std::pair<std::wstring, std::wstring>> filters = {
    {L"Drawing Files (*.dwg)", L"*.dwg"},
    {L"Database Files (*.kv)", L"*.kv"},
    {L"IES Files (*.ies)", L"*.ies"},
    {L"All Files (*.*)", L"*.*"},
};

}  // namespace

CAttachmentDialog::CAttachmentDialog(std::vector<std::wstring>& files)
    : files_(files), form_(L"Korvane Attachments") {
  Control& list = form_.addListBox(fileList).size(70, 10);
  form_.addButton(addButton, L"Add", [this] { add(); });
  form_.addButton(removeButton, L"Remove", [this] { remove(); });
  form_.addButton(okButton, L"&OK", [this] { store(); });
  form_.addButton(cancelButton, L"Cancel");
  form_.setLayout(column({fileList, row({addButton, removeButton, space(), okButton, cancelButton})}));
  for (const std::wstring& each : files_) {
    if (!each.empty()) list.addItem(each);
  }
  if (!files_.empty()) folder_ = folderOfPath(files_.back());
}

int CAttachmentDialog::doModal() { return desktop().runDialog(form_); }

void CAttachmentDialog::add() {
  FileChoice choice;
  choice.title = L"Select Additional Files";
  choice.folder = folder_;
  choice.filters = filters;
  const std::optional<std::wstring> chosen = desktop().chooseFile(choice);
  Control& list = form_.control(fileList);
  if (chosen && list.findItem(*chosen) < 0) list.addItem(*chosen);
}

void CAttachmentDialog::remove() {
  Control& list = form_.control(fileList);
  if (list.selected() >= 0) list.removeItem(list.selected());
}

void CAttachmentDialog::store() {
  const std::vector<std::wstring>& lines = form_.control(fileList).items();
  files_.assign(lines.size(), L"");
  for (size_t i = 0; i < lines.size(); ++i) {
    if (!lines[i].empty()) files_[i] = lines[i];
  }
  form_.close();
}
