#include "zarbo/dialogs/layer_system_options.h"

#include "zarbo/widgets/dialog.h"

using namespace platform;

LayerSystemOptions::LayerSystemOptions(IZbEngine* connection, bool bLeaveMasterColumns, int32_t system,
                                       const wchar_t* name)
    : row_(bLeaveMasterColumns, connection), system_(system), form_(L"Layer System Options", name) {}

int LayerSystemOptions::doModal() {
  build();
  form_.addOkAndCancel();
  form_.setFocus(description);
  form_.onStart = [this] {
    findRow();
    show();
  };
  form_.control(okButton).onPress = [this] {
    write();
    form_.close();
  };
  return runModuleDialog(form_);
}

void LayerSystemOptions::write() {
  const bool found = findRow();
  if (!found && !writesWithoutRow()) return;
  row_.Edit();
  store();
  row_.Update();
}

void CLayerSystemOptionsPlumb::build() {
  form().addEdit(description).size(40);
  form().setLayout(column({fields({field(L"Layer System:", description)}), okAndCancel()}));
}

void CLayerSystemOptionsPlumb::show() { form().control(description).setText(row().sDescription.get()); }

void CLayerSystemOptionsPlumb::store() { row().sDescription.set(form().text(description)); }

CLayerSystemOptionsElec::CLayerSystemOptionsElec(IZbEngine* connection, bool bLeaveMasterColumns,
                                                 int32_t system, const std::wstring& word)
    : LayerSystemOptions(connection, bLeaveMasterColumns, system),
      showsSolid_(word != L"Photo" && word != L"ElecPlus") {}

void CLayerSystemOptionsElec::build() {
  form().addEdit(description).size(40);
  form().addCheckBox(solid, L"Conduits and Cable Trays are solid");
  form().setLayout(column({fields({field(L"Layer System:", description)}), solid, okAndCancel()}));
}

void CLayerSystemOptionsElec::show() {
  form().control(description).setText(row().sDescription.get());
  form().control(solid).setChecked(row().bSolid.get());
  form().control(solid).setVisible(showsSolid_);
}

void CLayerSystemOptionsElec::store() {
  row().bSolid.set(form().control(solid).isChecked());
  row().sDescription.set(form().text(description));
}
