#include "zarbo/standards/layer_records.h"

tblLayer::tblLayer(bool bLeaveMasterColumns, IZbEngine* connection)
    : StandardsRecord({L"tblLayer", L"sName", L"ixLayer"}, bLeaveMasterColumns, connection) {
  describe({&ixLayer, &sName, &bRGBColor, &iColor, &iRed, &iGreen, &iBlue, &sLinetype, &bPlot, &sLineweight,
            &sPlotstyle, &ixMasterDatabase, &iMasterDatabaseIndex},
           ixLayer);
}

void tblLayer::MoveLast() { moveTo(&Engine::moveBottom); }

tblLayerKey::tblLayerKey(bool bLeaveMasterColumns, IZbEngine* connection)
    : StandardsRecord({L"tblLayerKey", L"sKey", L"ixLayerKey"}, bLeaveMasterColumns, connection) {
  describe({&ixLayerKey, &ixLayerSystem, &ixLayer, &sKey, &ixMasterDatabase, &iMasterDatabaseIndex},
           ixLayerKey);
}

bool tblLayerKey::FindBySystemAndKey(int32_t layerSystem, const std::wstring& key) {
  if (!engine() || !selectTable(L"isxLayerSystemKey")) return false;
  const COleVariant system = layerSystem == 0 ? COleVariant::null() : COleVariant(LONG{layerSystem});
  COleVariant record;
  return loadWhen(engine().seek2(system, COleVariant(key), record), record);
}

tblLayerSystem::tblLayerSystem(bool bLeaveMasterColumns, IZbEngine* connection)
    : StandardsRecord({L"tblLayerSystem", nullptr, L"ixLayerSystem"}, bLeaveMasterColumns, connection) {
  const std::vector<Column*> heading{&ixLayerSystem, &sDescription, &iSortOrder};
  const std::vector<Column*> master{&ixMasterDatabase, &iMasterDatabaseIndex};
  std::vector<Column*> rest{&bSolid, &sPrefix, &sSuffix};
  for (HatchColumns* hatch : {&supply, &returns, &exhaust, &outside}) {
    rest.insert(rest.end(), {&hatch->on, &hatch->type, &hatch->pattern, &hatch->angle, &hatch->scale});
  }
  rest.insert(rest.end(), {&bHatchFlexDucts, &dHatchOverhang});

  // The master columns stand behind the heading, but are written last.
  const auto joined = [&](const std::vector<Column*>& second, const std::vector<Column*>& third) {
    std::vector<Column*> columns = heading;
    columns.insert(columns.end(), second.begin(), second.end());
    columns.insert(columns.end(), third.begin(), third.end());
    return columns;
  };
  describe(joined(master, rest), ixLayerSystem, joined(rest, master));
}
