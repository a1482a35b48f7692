#include <algorithm>

#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/object_list.h"
#include "host/access/record_tables.h"
#include "host/access/walk.h"
#include "host/database/stubs.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// Null, with ERRNO set, for a name that is no table's.
const AcDbSymbolTable* tableArgument(const Call& call) {
  const AcDbObjectId id = tableNamed(currentDrawing(), call.text(0));
  const auto* const table = AcDbSymbolTable::cast(objectOf(id));
  if (!table) refuse(Errno::unknownTable);
  return table;
}

bool flag(const Call& call, size_t place) { return call.has(place) && call[place].isTrue(); }

/// What the lists of tables hold of a record: the old formats' groups. Empty for a table that shows all.
std::span<const int> shownCodes(std::wstring_view type) {
  static constexpr int layer[] = {0, 2, 70, 62, 6};
  // Of a dash with a text or shape also what is told of that.
  static constexpr int linetype[] = {0, 2, 70, 3, 72, 73, 40, 49, 75, 340, 46, 50, 44, 45, 9};
  if (type == L"LAYER") return layer;
  if (type == L"LTYPE") return linetype;
  return {};
}

bool isShown(std::span<const int> codes, const Value& group) {
  const int code = lisp::car(group).integer();
  if (!codes.empty()) return std::find(codes.begin(), codes.end(), code) != codes.end();
  const bool isObject = code < 0 || code == 5 || code == 105 || code == 330 || code == 100 || code == 102;
  return !isObject;
}

Value blockEntry(const AcDbBlockTableRecord& record) {
  const auto pair = [](int code, Value value) { return lisp::cons(Value(int32_t{code}), std::move(value)); };
  const AcGePoint3d origin = record.origin();
  lisp::ListBuilder list, point;
  list.add(pair(0, Value(std::wstring_view(L"BLOCK"))));
  list.add(pair(2, Value(std::wstring_view(record.getName()))));
  list.add(pair(70, Value(blockFlags(record))));
  if (!record.comments().empty()) list.add(pair(4, Value(std::wstring_view(record.comments()))));
  point.add(Value(int32_t{10}));
  for (const double each : {origin.x, origin.y, origin.z}) point.add(Value(each));
  list.add(point.take());
  const AcDbObjectId first = nextEntity(record.objectId());
  if (!first.isNull()) list.add(pair(-2, nameOf(first)));
  return list.take();
}

Value entryOf(AcDbObjectId id) {
  const AcDbObject& object = *objectOf(id);
  if (const auto* const block = AcDbBlockTableRecord::cast(&object)) return blockEntry(*block);
  const auto codes = shownCodes(typeNameOf(object));
  const Value all = objectList(object);
  lisp::ListBuilder list;
  for (const Value& group : lisp::Elements(all)) {
    if (isShown(codes, group)) list.add(group);
  }
  return list.take();
}

/// Walks leave out what programs don't take for records of the drawing's own.
bool isWalked(AcDbObjectId id) {
  if (id.isErased()) return false;
  const AcDbDatabase& drawing = *id.database();
  const auto* const block = AcDbBlockTableRecord::cast(objectOf(id));
  return !(block && block->isLayout()) && !(id == drawing.byLayerLinetype()) &&
         !(id == drawing.byBlockLinetype());
}

Value tblsearch(const Call& call) {
  const AcDbSymbolTable* const table = tableArgument(call);
  AcDbObjectId id;
  if (!table) return {};
  if (table->getAt(call.text(1).c_str(), id) != Acad::eOk) return refuse(Errno::invalidTableName);
  if (flag(call, 2)) {
    const auto& all = table->recordIds();
    const auto place = std::find(all.begin(), all.end(), id) - all.begin();
    accessStateOf(currentDrawing()).tableWalks[table->objectId()] = static_cast<size_t>(place) + 1;
  }
  return entryOf(id);
}

Value tblnext(const Call& call) {
  const AcDbSymbolTable* const table = tableArgument(call);
  if (!table) return {};
  size_t& place = accessStateOf(currentDrawing()).tableWalks[table->objectId()];
  if (flag(call, 1)) place = 0;
  const auto& all = table->recordIds();
  while (place < all.size() && !isWalked(all[place])) ++place;
  return place < all.size() ? entryOf(all[place++]) : Value();
}

/// A block's record stands for the block: its next entity is the block's first.
Value tblobjname(const Call& call) {
  const AcDbSymbolTable* const table = tableArgument(call);
  AcDbObjectId id;
  if (!table) return {};
  return table->getAt(call.text(1).c_str(), id) == Acad::eOk ? nameOf(id) : refuse(Errno::invalidTableName);
}

}  // namespace

std::span<const lisp::Builtin> tableFunctions() {
  static const lisp::Builtin table[] = {
      {L"TBLSEARCH", tblsearch, 2, 3},
      {L"TBLNEXT", tblnext, 1, 2},
      {L"TBLOBJNAME", tblobjname, 2, 2},
  };
  return table;
}

}  // namespace host
