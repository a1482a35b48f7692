#include "host/filing/table_names.h"

namespace host {
namespace {

template <class Class>
AcRxClass* classOf() {
  return Class::desc();
}

constexpr TableName names[] = {
    {"VPORT", classOf<AcDbViewportTable>, classOf<AcDbViewportTableRecord>},
    {"LTYPE", classOf<AcDbLinetypeTable>, classOf<AcDbLinetypeTableRecord>},
    {"LAYER", classOf<AcDbLayerTable>, classOf<AcDbLayerTableRecord>},
    {"STYLE", classOf<AcDbTextStyleTable>, classOf<AcDbTextStyleTableRecord>},
    {"VIEW", classOf<AcDbViewTable>, classOf<AcDbViewTableRecord>},
    {"UCS", classOf<AcDbUCSTable>, classOf<AcDbUCSTableRecord>},
    {"APPID", classOf<AcDbRegAppTable>, classOf<AcDbRegAppTableRecord>},
    {"DIMSTYLE", classOf<AcDbDimStyleTable>, classOf<AcDbDimStyleTableRecord>},
    {"BLOCK_RECORD", classOf<AcDbBlockTable>, classOf<AcDbBlockTableRecord>},
};

}  // namespace

std::span<const TableName> tableNames() { return names; }

}  // namespace host
