#pragma once

#include "zarbo/standards/record.h"

/// The three tables of the layer model. The application asks for a layer by a key within a layer
/// system: `tblLayerSystem` lists the systems, `tblLayerKey` ties a key of a system to a layer,
/// `tblLayer` holds the layer's appearance. The pseudo system `General` has no row: its keys are
/// those whose `ixLayerSystem` is null.
///
/// `bLeaveMasterColumns` is true for a database that is opened by path for its own sake: no write
/// then names the columns that tie a row to a master database.

class tblLayer : public StandardsRecord {
 public:
  tblLayer(bool bLeaveMasterColumns, IZbEngine* connection);
  void MoveLast();

  IntegerColumn ixLayer{L"ixLayer"};
  /// The layer's name in the drawing, unique without regard to case.
  TextColumn sName{L"sName"};
  FlagColumn bRGBColor{L"bRGBColor"};
  /// The host's colour index, 1 to 255.
  IntegerColumn iColor{L"iColor", Nulls::allowed};
  IntegerColumn iRed{L"iRed", Nulls::allowed};
  IntegerColumn iGreen{L"iGreen", Nulls::allowed};
  IntegerColumn iBlue{L"iBlue", Nulls::allowed};
  /// "CONTINUOUS" in any case is the drawing's default.
  TextColumn sLinetype{L"sLinetype"};
  FlagColumn bPlot{L"bPlot"};
  /// Hundredths of a millimetre as decimal digits; null is the default.
  TextColumn sLineweight{L"sLineweight", Nulls::allowed};
  TextColumn sPlotstyle{L"sPlotstyle", Nulls::allowed};
  IntegerColumn ixMasterDatabase{L"ixMasterDatabase", Nulls::allowed};
  IntegerColumn iMasterDatabaseIndex{L"iMasterDatabaseIndex", Nulls::allowed};
};

class tblLayerKey : public StandardsRecord {
 public:
  tblLayerKey(bool bLeaveMasterColumns, IZbEngine* connection);
  /// A system of 0 finds the keys of `General`.
  bool FindBySystemAndKey(int32_t layerSystem, const std::wstring& key);

  IntegerColumn ixLayerKey{L"ixLayerKey"};
  IntegerColumn ixLayerSystem{L"ixLayerSystem", Nulls::allowed};
  IntegerColumn ixLayer{L"ixLayer"};
  TextColumn sKey{L"sKey"};
  IntegerColumn ixMasterDatabase{L"ixMasterDatabase", Nulls::allowed};
  IntegerColumn iMasterDatabaseIndex{L"iMasterDatabaseIndex", Nulls::allowed};
};

/// The hatch of one kind of duct in a layer system. Angle in radians.
struct HatchColumns {
  HatchColumns(const wchar_t* on, const wchar_t* type, const wchar_t* pattern, const wchar_t* angle,
               const wchar_t* scale)
      : on(on), type(type), pattern(pattern), angle(angle), scale(scale) {}
  FlagColumn on;
  /// "Predefined" or "Custom".
  TextColumn type;
  TextColumn pattern;
  RealColumn angle;
  RealColumn scale;
};

class tblLayerSystem : public StandardsRecord {
 public:
  tblLayerSystem(bool bLeaveMasterColumns, IZbEngine* connection);

  IntegerColumn ixLayerSystem{L"ixLayerSystem"};
  TextColumn sDescription{L"sDescription"};
  IntegerColumn iSortOrder{L"iSortOrder"};
  IntegerColumn ixMasterDatabase{L"ixMasterDatabase", Nulls::allowed};
  IntegerColumn iMasterDatabaseIndex{L"iMasterDatabaseIndex", Nulls::allowed};
  FlagColumn bSolid{L"bSolid"};
  TextColumn sPrefix{L"sPrefix"};
  TextColumn sSuffix{L"sSuffix"};
  HatchColumns supply{L"supplyHatchOn", L"supplyHatchType", L"supplyHatchPattern", L"supplyHatchAngle",
                      L"supplyHatchScale"};
  HatchColumns returns{L"returnHatchOn", L"returnHatchType", L"returnHatchPattern", L"returnHatchAngle",
                       L"returnHatchScale"};
  HatchColumns exhaust{L"exhaustHatchOn", L"exhaustHatchType", L"exhaustHatchPattern", L"exhaustHatchAngle",
                       L"exhaustHatchScale"};
  HatchColumns outside{L"outsideHatchOn", L"outsideHatchType", L"outsideHatchPattern", L"outsideHatchAngle",
                       L"outsideHatchScale"};
  FlagColumn bHatchFlexDucts{L"bHatchFlexDucts"};
  RealColumn dHatchOverhang{L"dHatchOverhang"};
};
