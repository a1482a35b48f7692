#include "host/access/object_building.h"

#include <deque>

#include "brx/db_attributes.h"
#include "brx/db_polylines.h"
#include "host/access/group_checks.h"
#include "host/access/refusal.h"
#include "host/access/xdata.h"
#include "host/database/header_variables.h"
#include "host/database/stubs.h"
#include "host/rx/registry.h"

namespace host {
namespace {

using lisp::Value;

AcRxClass& classOfPolyline(const ListGroups& groups) {
  enum : int { isIn3d = 8, isMesh = 16 | 64 };
  const int flags = integerGroup(groups, 70, 0);
  require((flags & isMesh) == 0, Errno::badType);
  return *(flags & isIn3d ? AcDb3dPolyline::desc() : AcDb2dPolyline::desc());
}

AcRxClass& classOfVertex(const AcDbEntity* owner) {
  require(owner != nullptr, Errno::badSequence);
  return *(AcDb3dPolyline::cast(owner) ? AcDb3dPolylineVertex::desc() : AcDb2dVertex::desc());
}

/// A list with groups that were left out, each behind the mark of its subclass.
class CompletedList {
 public:
  explicit CompletedList(const ListGroups& given) : groups_(given) {}
  const ListGroups& groups() const { return groups_; }
  void add(int code, Value value, std::wstring_view subclass) {
    if (findGroup(groups_, code)) return;
    const auto mark = std::find_if(groups_.begin(), groups_.end(), [&](const ListGroup& each) {
      return each.code == 100 && each.value->text() == subclass;
    });
    values_.push_back(std::move(value));
    groups_.insert(mark == groups_.end() ? mark : mark + 1, {code, &values_.back()});
  }

 private:
  std::deque<Value> values_;
  ListGroups groups_;
};

Value variable(const AcDbDatabase& drawing, std::wstring_view name) {
  const HeaderValue value = headerValue(drawing, findHeaderVariable(name).value());
  if (const auto* const text = std::get_if<std::wstring>(&value)) return Value(std::wstring_view(*text));
  return Value(std::get<double>(value));
}

void complete(CompletedList& list, std::wstring_view type, const AcDbDatabase& drawing) {
  if (type == L"TEXT" || type == L"ATTRIB" || type == L"ATTDEF") {
    list.add(7, variable(drawing, L"TEXTSTYLE"), L"AcDbText");
  } else if (type == L"MTEXT") {
    list.add(7, variable(drawing, L"TEXTSTYLE"), L"AcDbMText");
    list.add(40, variable(drawing, L"TEXTSIZE"), L"AcDbMText");
  } else if (type == L"3DFACE") {
    list.add(13, *findGroup(list.groups(), 12), L"AcDbFace");
  }
}

}  // namespace

AcRxClass& classOfList(std::wstring_view type, const ListGroups& groups, const AcDbEntity* owner) {
  if (type == L"POLYLINE") return classOfPolyline(groups);
  if (type == L"VERTEX") return classOfVertex(owner);
  AcRxClass* const found = findClassByDxfName(type);
  require(found && found->isDerivedFrom(AcDbObject::desc()) && !found->isDerivedFrom(AcDbSymbolTable::desc()),
          Errno::badType);
  return *found;
}

void provideLayer(AcDbDatabase& drawing, const ListGroups& groups) {
  const Value* const name = findGroup(groups, 8);
  if (!name) return;
  AcDbObjectPointer<AcDbLayerTable> table(drawing.layerTableId(), AcDb::kForWrite);
  require(table.openStatus());
  if (table->has(name->text().c_str())) return;
  auto layer = std::make_unique<AcDbLayerTableRecord>();
  require(layer->setName(name->text().c_str()) == Acad::eOk, Errno::badLayer);
  layer->setLinetypeObjectId(drawing.continuousLinetype());
  require(table->add(layer.get()));
  layer.release()->close();
}

void takeXdata(AcDbObject& object, const ListGroups& groups) {
  const Value* const given = findGroup(groups, -3);
  if (!given) return;
  const GroupList data = xdataGroups(*given);
  if (!data.empty()) require(object.setXData(data.head()));
}

void fillObject(AcDbObject& object, ListReader& reader) {
  require(object.dxfInFields(&reader));
  AcDbText* const text = AcDbText::cast(&object);
  if (text) require(text->adjustAlignment());
}

std::unique_ptr<AcDbObject> buildObject(AcDbDatabase& drawing, std::wstring_view type,
                                        const ListGroups& given, const AcDbEntity* owner) {
  const AcRxClass& wanted = classOfList(type, given, owner);
  requireNeeded(type, given);
  requireSuitable(type, given, drawing);
  CompletedList list(given);
  complete(list, type, drawing);
  std::unique_ptr<AcRxObject> made(wanted.create());
  AcDbObject* const object = AcDbObject::cast(made.get());
  require(object != nullptr, Errno::badType);
  made.release();
  std::unique_ptr<AcDbObject> result(object);
  if (AcDbEntity* const entity = AcDbEntity::cast(object)) {
    provideLayer(drawing, given);
    entity->setDatabaseDefaults(&drawing);
  }
  ListReader reader(drawing, list.groups());
  fillObject(*object, reader);
  takeXdata(*object, given);
  return result;
}

}  // namespace host
