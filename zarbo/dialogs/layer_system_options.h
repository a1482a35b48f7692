#pragma once

#include <string>
#include <vector>

#include "platform/desktop/form.h"
#include "zarbo/standards/layer_records.h"

/// The options of one layer system, as a discipline sees them. Nothing is checked: what is typed goes to the
/// table.
class LayerSystemOptions {
 public:
  LayerSystemOptions(IZbEngine* connection, bool bLeaveMasterColumns, int32_t system,
                     const wchar_t* name = L"");
  virtual ~LayerSystemOptions() = default;
  int doModal();

 protected:
  enum Control {
    description = 1056,
    solid = 1057,
    prefix = 1058,
    suffix = 1059,
    hatchFlexDucts = 1060,
    overhang = 1061,
    hatches = 1067,
  };
  /// Adds the controls and lays them out.
  virtual void build() = 0;
  /// The row has been read; where it couldn't be found, the record holds what it held before.
  virtual void show() = 0;
  /// What goes into the row that is being edited.
  virtual void store() = 0;
  /// Without the row nothing is written, where `false` says so.
  virtual bool writesWithoutRow() const { return true; }

  bool findRow() { return row_.FindByIndex(system_); }
  platform::Form& form() { return form_; }
  tblLayerSystem& row() { return row_; }

 private:
  void write();

  tblLayerSystem row_;
  int32_t system_;
  platform::Form form_;
};

/// The name only.
class CLayerSystemOptionsPlumb : public LayerSystemOptions {
 public:
  using LayerSystemOptions::LayerSystemOptions;

 private:
  void build() override;
  void show() override;
  void store() override;
};

/// The name, and whether conduits and cable trays are solid.
class CLayerSystemOptionsElec : public LayerSystemOptions {
 public:
  /// "Photo" and "ElecPlus" hide the check box; it writes its state all the same.
  CLayerSystemOptionsElec(IZbEngine* connection, bool bLeaveMasterColumns, int32_t system,
                          const std::wstring& word);

 private:
  void build() override;
  void show() override;
  void store() override;

  bool showsSolid_;
};

/// The name, labels, and the hatching of four kinds of duct.
class CLayerSystemOptionsHVAC : public LayerSystemOptions {
 public:
  CLayerSystemOptionsHVAC(IZbEngine* connection, bool bLeaveMasterColumns, int32_t system);

 private:
  void build() override;
  void show() override;
  void store() override;
  bool writesWithoutRow() const override { return false; }

  void setUpGrid();
  void fillGrid();
  void showHatch(const wchar_t* duct, const HatchColumns& hatch);
  void storeHatch(int gridRow, HatchColumns& hatch);
  void setPatternCell(int gridRow, const std::wstring& type, std::wstring pattern);
  void typeChosen(int gridRow, const std::wstring& type);

  platform::Grid* grid_ = nullptr;
  std::vector<std::wstring> patterns_;
  std::wstring typeBeforeEdit_;
};
