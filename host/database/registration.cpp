#include "brx/db_attributes.h"
#include "brx/db_block.h"
#include "brx/db_dictionary.h"
#include "brx/db_ellipse.h"
#include "brx/db_faces.h"
#include "brx/db_leader.h"
#include "brx/db_polylines.h"
#include "brx/db_proxy.h"
#include "brx/db_spline.h"
#include "brx/db_viewport.h"
#include "host/database/stubs.h"

namespace {

template <class Class>
AcRxObject* create() {
  return new Class;
}

template <class Class>
void add(const ACHAR* name, const ACHAR* parent, AcRxConstructor constructor,
         const ACHAR* dxfName = nullptr) {
  Class::gpDesc = newAcRxClass(name, parent, constructor, dxfName);
}

void registerEntities() {
  add<AcDbObject>(L"AcDbObject", L"AcRxObject", nullptr);
  add<AcDbDatabase>(L"AcDbDatabase", L"AcRxObject", nullptr);
  add<AcDbEntity>(L"AcDbEntity", L"AcDbObject", nullptr);
  add<AcDbCurve>(L"AcDbCurve", L"AcDbEntity", nullptr);
  add<AcDbLine>(L"AcDbLine", L"AcDbCurve", create<AcDbLine>, L"LINE");
  add<AcDbArc>(L"AcDbArc", L"AcDbCurve", create<AcDbArc>, L"ARC");
  add<AcDbCircle>(L"AcDbCircle", L"AcDbCurve", create<AcDbCircle>, L"CIRCLE");
  add<AcDbPolyline>(L"AcDbPolyline", L"AcDbCurve", create<AcDbPolyline>, L"LWPOLYLINE");
  add<AcDbPoint>(L"AcDbPoint", L"AcDbEntity", create<AcDbPoint>, L"POINT");
  add<AcDbText>(L"AcDbText", L"AcDbEntity", create<AcDbText>, L"TEXT");
  add<AcDbMText>(L"AcDbMText", L"AcDbEntity", create<AcDbMText>, L"MTEXT");
  add<AcDbBlockReference>(L"AcDbBlockReference", L"AcDbEntity", create<AcDbBlockReference>, L"INSERT");
  add<AcDbAttributeDefinition>(L"AcDbAttributeDefinition", L"AcDbText", create<AcDbAttributeDefinition>,
                               L"ATTDEF");
  add<AcDbAttribute>(L"AcDbAttribute", L"AcDbText", create<AcDbAttribute>, L"ATTRIB");
  add<AcDbEllipse>(L"AcDbEllipse", L"AcDbCurve", create<AcDbEllipse>, L"ELLIPSE");
  add<AcDbSpline>(L"AcDbSpline", L"AcDbCurve", create<AcDbSpline>, L"SPLINE");
  add<AcDbLeader>(L"AcDbLeader", L"AcDbCurve", create<AcDbLeader>, L"LEADER");
  add<AcDbViewport>(L"AcDbViewport", L"AcDbEntity", create<AcDbViewport>, L"VIEWPORT");
  add<AcDbFace>(L"AcDbFace", L"AcDbEntity", create<AcDbFace>, L"3DFACE");
  add<AcDbSolid>(L"AcDbSolid", L"AcDbEntity", create<AcDbSolid>, L"SOLID");
  add<AcDbTrace>(L"AcDbTrace", L"AcDbSolid", create<AcDbTrace>, L"TRACE");
  add<AcDbSequenceEnd>(L"AcDbSequenceEnd", L"AcDbEntity", create<AcDbSequenceEnd>, L"SEQEND");
  add<AcDbVertex>(L"AcDbVertex", L"AcDbEntity", nullptr);
  add<AcDb3dPolylineVertex>(L"AcDb3dPolylineVertex", L"AcDbVertex", create<AcDb3dPolylineVertex>, L"VERTEX");
  add<AcDb2dVertex>(L"AcDb2dVertex", L"AcDbVertex", create<AcDb2dVertex>, L"VERTEX");
  add<AcDb3dPolyline>(L"AcDb3dPolyline", L"AcDbCurve", create<AcDb3dPolyline>, L"POLYLINE");
  add<AcDb2dPolyline>(L"AcDb2dPolyline", L"AcDbCurve", create<AcDb2dPolyline>, L"POLYLINE");
}

/// All else that is no table or record.
void registerObjects() {
  // Without names of their own in drawing files: what comes as a proxy is carried like any unknown class.
  add<AcDbProxyEntity>(L"AcDbProxyEntity", L"AcDbEntity", create<AcDbProxyEntity>);
  add<AcDbProxyObject>(L"AcDbProxyObject", L"AcDbObject", create<AcDbProxyObject>);
  add<AcDbDictionary>(L"AcDbDictionary", L"AcDbObject", create<AcDbDictionary>, L"DICTIONARY");
  add<AcDbDictionaryWithDefault>(L"AcDbDictionaryWithDefault", L"AcDbDictionary",
                                 create<AcDbDictionaryWithDefault>, L"ACDBDICTIONARYWDFLT");
  add<AcDbPlaceHolder>(L"AcDbPlaceHolder", L"AcDbObject", create<AcDbPlaceHolder>, L"ACDBPLACEHOLDER");
  add<AcDbXrecord>(L"AcDbXrecord", L"AcDbObject", create<AcDbXrecord>, L"XRECORD");
  add<AcDbGroup>(L"AcDbGroup", L"AcDbObject", create<AcDbGroup>, L"GROUP");
  add<AcDbSortentsTable>(L"AcDbSortentsTable", L"AcDbObject", create<AcDbSortentsTable>, L"SORTENTSTABLE");
  add<AcDbLayout>(L"AcDbLayout", L"AcDbObject", create<AcDbLayout>, L"LAYOUT");
}

void registerTables() {
  add<AcDbViewTable>(L"AcDbViewTable", L"AcDbSymbolTable", create<AcDbViewTable>, L"TABLE");
  add<AcDbUCSTable>(L"AcDbUCSTable", L"AcDbSymbolTable", create<AcDbUCSTable>, L"TABLE");
  add<AcDbViewportTable>(L"AcDbViewportTable", L"AcDbSymbolTable", create<AcDbViewportTable>, L"TABLE");
  add<AcDbSymbolTable>(L"AcDbSymbolTable", L"AcDbObject", nullptr);
  add<AcDbBlockTable>(L"AcDbBlockTable", L"AcDbSymbolTable", create<AcDbBlockTable>, L"TABLE");
  add<AcDbLayerTable>(L"AcDbLayerTable", L"AcDbSymbolTable", create<AcDbLayerTable>, L"TABLE");
  add<AcDbLinetypeTable>(L"AcDbLinetypeTable", L"AcDbSymbolTable", create<AcDbLinetypeTable>, L"TABLE");
  add<AcDbTextStyleTable>(L"AcDbTextStyleTable", L"AcDbSymbolTable", create<AcDbTextStyleTable>, L"TABLE");
  add<AcDbRegAppTable>(L"AcDbRegAppTable", L"AcDbSymbolTable", create<AcDbRegAppTable>, L"TABLE");
  add<AcDbDimStyleTable>(L"AcDbDimStyleTable", L"AcDbSymbolTable", create<AcDbDimStyleTable>, L"TABLE");
}

void registerRecords() {
  add<AcDbSymbolTableRecord>(L"AcDbSymbolTableRecord", L"AcDbObject", nullptr);
  add<AcDbBlockTableRecord>(L"AcDbBlockTableRecord", L"AcDbSymbolTableRecord", create<AcDbBlockTableRecord>,
                            L"BLOCK_RECORD");
  add<AcDbLayerTableRecord>(L"AcDbLayerTableRecord", L"AcDbSymbolTableRecord", create<AcDbLayerTableRecord>,
                            L"LAYER");
  add<AcDbLinetypeTableRecord>(L"AcDbLinetypeTableRecord", L"AcDbSymbolTableRecord",
                               create<AcDbLinetypeTableRecord>, L"LTYPE");
  add<AcDbTextStyleTableRecord>(L"AcDbTextStyleTableRecord", L"AcDbSymbolTableRecord",
                                create<AcDbTextStyleTableRecord>, L"STYLE");
  add<AcDbRegAppTableRecord>(L"AcDbRegAppTableRecord", L"AcDbSymbolTableRecord",
                             create<AcDbRegAppTableRecord>, L"APPID");
  add<AcDbDimStyleTableRecord>(L"AcDbDimStyleTableRecord", L"AcDbSymbolTableRecord",
                               create<AcDbDimStyleTableRecord>, L"DIMSTYLE");
  add<AcDbViewTableRecord>(L"AcDbViewTableRecord", L"AcDbSymbolTableRecord", create<AcDbViewTableRecord>,
                           L"VIEW");
  add<AcDbUCSTableRecord>(L"AcDbUCSTableRecord", L"AcDbSymbolTableRecord", create<AcDbUCSTableRecord>,
                          L"UCS");
  add<AcDbViewportTableRecord>(L"AcDbViewportTableRecord", L"AcDbSymbolTableRecord",
                               create<AcDbViewportTableRecord>, L"VPORT");
}

void registerAll() {
  registerEntities();
  registerObjects();
  registerTables();
  registerRecords();
  acrxBuildClassHierarchy();
}

}  // namespace

void host::registerDatabaseClasses() { [[maybe_unused]] static const bool once = (registerAll(), true); }
