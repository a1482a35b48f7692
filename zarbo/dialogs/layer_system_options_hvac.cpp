#include "platform/text/digits.h"
#include "zarbo/dialogs/layer_system_options.h"
#include "zarbo/dialogs/layer_texts.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/number_text.h"

using namespace platform;

namespace {

enum Column { nothing, duct, isOn, type, pattern, angle, scale, columnCount };
constexpr int overhangDecimals = 4, scaleDecimals = 2;
const std::wstring predefined = L"Predefined";

/// The texts at the head of what the application's function gives.
std::vector<std::wstring> patternNames() {
  std::vector<std::wstring> names;
  ApplicationCall call(L"hvac-getPatList");
  if (!call.invoke()) return names;
  const resbuf* each = call.answer();
  if (each && each->restype == RTLB) each = each->rbnext;
  for (; each && each->restype == RTSTR; each = each->rbnext) names.emplace_back(each->resval.rstring);
  return names;
}

}  // namespace

CLayerSystemOptionsHVAC::CLayerSystemOptionsHVAC(IZbEngine* connection, bool bLeaveMasterColumns,
                                                 int32_t system)
    : LayerSystemOptions(connection, bLeaveMasterColumns, system, L"kv_zarbo:LayerSystemOptionsHVAC") {}

void CLayerSystemOptionsHVAC::build() {
  constexpr int hatchLabel = 1000;
  for (const int edit : {description, prefix, suffix}) form().addEdit(edit).size(40);
  form().addCheckBox(solid, L"Ducts are solid");
  form().addLabel(hatchLabel, L"Hatch Settings:");
  grid_ = &form().addGrid(hatches, columnCount, 1, 2);
  form().control(hatches).size(70, 7);
  form().addCheckBox(hatchFlexDucts, L"Hatch Flex Ductwork");
  form().addEdit(overhang).size(12);
  form().setLayout(column({
      fields({field(L"Layer System:", description)}),
      solid,
      fields({field(L"Label Prefix:", prefix), field(L"Label Suffix:", suffix)}),
      hatchLabel,
      hatches,
      hatchFlexDucts,
      fields({field(L"Hatch Overhang:", overhang)}),
      okAndCancel(),
  }));
}

void CLayerSystemOptionsHVAC::show() {
  form().control(description).setText(row().sDescription.get());
  form().control(prefix).setText(row().sPrefix.get());
  form().control(suffix).setText(row().sSuffix.get());
  form().control(solid).setChecked(row().bSolid.get());
  form().control(hatchFlexDucts).setChecked(row().bHatchFlexDucts.get());
  form().control(overhang).setText(realToText(row().dHatchOverhang.get(), overhangDecimals, true));
  setUpGrid();
  fillGrid();
  grid_->autoSize();
}

void CLayerSystemOptionsHVAC::setUpGrid() {
  constexpr const wchar_t* headers[] = {L"", L"", L"Display Hatch", L"Type", L"Pattern", L"Angle", L"Scale"};
  for (int column = 0; column < columnCount; ++column) grid_->setText(0, column, headers[column]);
  grid_->setColumnHidden(nothing);
  grid_->setColumnKind(isOn, CellKind::checkBox);
  grid_->setColumnChoices(type, L"Predefined|Custom");
  grid_->setWholeRows(true);
  grid_->onBeginEdit = [this](int gridRow, int column) {
    if (column == type) typeBeforeEdit_ = grid_->text(gridRow, type);
    return column != duct;
  };
  grid_->onChoice = [this](int gridRow, int column, const std::wstring& chosen) {
    if (column == type) typeChosen(gridRow, chosen);
  };
}

void CLayerSystemOptionsHVAC::fillGrid() {
  patterns_ = patternNames();
  if (!findRow()) return;
  showHatch(L"Supply", row().supply);
  showHatch(L"Return", row().returns);
  showHatch(L"Exhaust", row().exhaust);
  showHatch(L"Outside", row().outside);
}

void CLayerSystemOptionsHVAC::showHatch(const wchar_t* name, const HatchColumns& hatch) {
  const int gridRow = grid_->insertRow();
  grid_->setText(gridRow, duct, name);
  grid_->setText(gridRow, isOn, hatch.on.get() ? L"-1" : L"0");
  grid_->setText(gridRow, type, hatch.type.get());
  setPatternCell(gridRow, hatch.type.get(), hatch.pattern.get());
  grid_->setText(gridRow, angle, angleText(hatch.angle.get()));
  grid_->setText(gridRow, scale, realToText(hatch.scale.get(), scaleDecimals, true));
}

/// A pattern that is stored and isn't in the list stays as the cell's text.
void CLayerSystemOptionsHVAC::setPatternCell(int gridRow, const std::wstring& ofType, std::wstring text) {
  if (ofType == predefined) {
    grid_->setCellChoices(gridRow, pattern, patterns_, std::vector<int64_t>(patterns_.size()));
    if (text.empty() && !patterns_.empty()) text = patterns_.front();
  } else {
    grid_->setCellKind(gridRow, pattern, CellKind::text);
  }
  grid_->setText(gridRow, pattern, text);
}

void CLayerSystemOptionsHVAC::typeChosen(int gridRow, const std::wstring& chosen) {
  if (chosen == typeBeforeEdit_) return;
  typeBeforeEdit_ = chosen;
  setPatternCell(gridRow, chosen, L"");
}

void CLayerSystemOptionsHVAC::store() {
  row().bSolid.set(form().control(solid).isChecked());
  row().sDescription.set(form().text(description));
  row().sPrefix.set(form().text(prefix));
  row().sSuffix.set(form().text(suffix));
  row().bHatchFlexDucts.set(form().control(hatchFlexDucts).isChecked());
  row().dHatchOverhang.set(readReal(form().text(overhang)));
  if (grid_->rows() < 2) return;
  HatchColumns* const hatchesInOrder[] = {&row().supply, &row().returns, &row().exhaust, &row().outside};
  for (int i = 0; i < 4; ++i) storeHatch(i + 1, *hatchesInOrder[i]);
}

void CLayerSystemOptionsHVAC::storeHatch(int gridRow, HatchColumns& hatch) {
  hatch.on.set(grid_->text(gridRow, isOn) != L"0");
  hatch.type.set(grid_->text(gridRow, type));
  hatch.pattern.set(grid_->text(gridRow, pattern));
  hatch.angle.set(angleOfText(grid_->text(gridRow, angle)));
  hatch.scale.set(readReal(grid_->text(gridRow, scale)));
}
