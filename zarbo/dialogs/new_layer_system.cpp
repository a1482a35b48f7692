#include "zarbo/dialogs/new_layer_system.h"

#include "platform/desktop/desktop.h"
#include "platform/desktop/form.h"
#include "platform/text/trim.h"
#include "zarbo/support/utilities.h"
#include "zarbo/widgets/dialog.h"

namespace {

using namespace platform;

enum Number { nameEdit = 2006, sourceLabel = 1000, sources = 1013 };

}  // namespace

int CNewLayerSystem::doModal() {
  Form form(L"New Layer System");
  form.addEdit(nameEdit).size(40);
  form.addLabel(sourceLabel, L"Copy Layers from This System:");
  form.addListBox(sources).size(40, 10);
  form.addOkAndCancel();
  form.setLayout(
      column({fields({field(L"New Layer System Name:", nameEdit)}), sourceLabel, sources, okAndCancel()}));
  for (int row = 2; row < systems_.rows(); ++row)
    form.control(sources).addItem(systems_.text(row, nameColumn_));
  if (!form.control(sources).items().empty()) form.control(sources).select(0);
  form.setFocus(nameEdit);
  const auto refuse = [&](const wchar_t* message) {
    desktop().messageBox({L"Korvane", message, exclamationIcon});
    form.setFocus(nameEdit);
  };
  form.control(okButton).onPress = [&] {
    source_ = form.control(sources).selected();
    name_ = trimmed(form.text(nameEdit));
    if (name_.empty() || equalNoCase(name_, L"GENERAL")) return refuse(L"Invalid layer system name.");
    if (form.control(sources).findItem(name_) >= 0) {
      return refuse(L"A layer system with that name already exists.");
    }
    form.close();
  };
  return runModuleDialog(form);
}
