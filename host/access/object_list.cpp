#include "host/access/object_list.h"

#include <cwchar>
#include <iterator>

#include "brx/db_proxy.h"
#include "brx/lisp_calls.h"
#include "host/access/walk.h"
#include "host/bridge/values.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/lisp/wildcard.h"
#include "platform/text/hex.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Value;

Value pair(int code, Value value) { return lisp::cons(Value(int32_t{code}), std::move(value)); }
Value textPair(int code, std::wstring_view text) { return pair(code, Value(text)); }
Value namePair(int code, AcDbObjectId id) {
  return pair(code, Value::entity(reinterpret_cast<int64_t>(id.stub())));
}

/// Collects what an object writes about itself.
class ListWriter : public AcDbDxfFiler {
 public:
  ListWriter(const AcDbObject& object, lisp::ListBuilder& list) : object_(object), list_(list) {}
  Acad::ErrorStatus filerStatus() const override { return status_; }
  void setError(Acad::ErrorStatus status) override { status_ = status; }
  AcDbDatabase* database() const override { return object_.database(); }
  Acad::ErrorStatus readItem(resbuf*) override { return Acad::eIsWriting; }
  Acad::ErrorStatus pushBackItem() override { return Acad::eIsWriting; }
  bool atSubclassData(const ACHAR*) override { return false; }

  Acad::ErrorStatus writeItem(const resbuf& item) override {
    // A record files the block's units there.
    const auto* const block = item.restype == 70 ? AcDbBlockTableRecord::cast(&object_) : nullptr;
    list_.add(block ? pair(70, Value(blockFlags(*block))) : groupPair(item));
    const bool isEntityMark = item.restype == 100 && std::wstring_view(item.resval.rstring) == L"AcDbEntity";
    if (isEntityMark) addSpace();
    return status_;
  }
  Acad::ErrorStatus writePoint2d(int code, const AcGePoint2d& value) override {
    lisp::ListBuilder point;
    point.add(Value(int32_t{code}));
    point.add(Value(value.x));
    point.add(Value(value.y));
    list_.add(point.take());
    return status_;
  }

 private:
  void addSpace() {
    const AcDbObjectId block = blockOf(object_);
    list_.add(pair(67, Value(int32_t{isPaperSpace(block)})));
    const std::wstring layout = layoutNameOf(block);
    if (!layout.empty()) list_.add(textPair(410, layout));
  }

  const AcDbObject& object_;
  lisp::ListBuilder& list_;
  Acad::ErrorStatus status_ = Acad::eOk;
};

void addAttached(lisp::ListBuilder& list, const AcDbObject& object) {
  const AcDbObjectId dictionary = object.extensionDictionary();
  if (dictionary.isValid() && !dictionary.isErased()) {
    list.add(textPair(102, L"{ACAD_XDICTIONARY"));
    list.add(namePair(360, dictionary));
    list.add(textPair(102, L"}"));
  }
  bool any = false;
  for (const AcDbObjectId& each : object.reactorIds()) {
    if (each.isErased()) continue;
    if (!any) list.add(textPair(102, L"{ACAD_REACTORS"));
    list.add(namePair(330, each));
    any = true;
  }
  if (any) list.add(textPair(102, L"}"));
}

/// A block's record stands for the block too: its base point and its first entity.
void addBlock(lisp::ListBuilder& list, const AcDbBlockTableRecord& record) {
  const AcGePoint3d origin = record.origin();
  lisp::ListBuilder point;
  point.add(Value(int32_t{10}));
  for (const double each : {origin.x, origin.y, origin.z}) point.add(Value(each));
  list.add(point.take());
  const AcDbObjectId first = nextEntity(record.objectId());
  if (!first.isNull()) list.add(namePair(-2, first));
}

void addGroups(lisp::ListBuilder& list, const AcDbObject& object) {
  const std::wstring type = typeNameOf(object);
  list.add(namePair(-1, object.objectId()));
  list.add(textPair(0, type));
  if (!object.ownerId().isNull()) list.add(namePair(330, object.ownerId()));
  list.add(textPair(type == L"DIMSTYLE" ? 105 : 5, hexText(object.handle())));
  addAttached(list, object);
  ListWriter writer(object, list);
  object.dxfOutFields(&writer);
  if (const auto* const block = AcDbBlockTableRecord::cast(&object)) addBlock(list, *block);
}

bool isAsked(std::wstring_view application, const Value& patterns) {
  const std::wstring name = upperCased(std::wstring(application));
  for (const Value& each : lisp::Elements(patterns)) {
    if (each.isText() && lisp::matchesWildcard(name, upperCased(each.text()))) return true;
  }
  return false;
}

}  // namespace

Value xdataList(const AcDbObject& object, const Value& applications) {
  resbuf* const data = object.xData();
  lisp::ListBuilder all;
  const resbuf* at = data;
  while (at) {
    const bool asked = at->restype == 1001 && isAsked(at->resval.rstring, applications);
    lisp::ListBuilder one;
    if (asked) one.add(Value(std::wstring_view(at->resval.rstring)));
    for (at = at->rbnext; at && at->restype != 1001; at = at->rbnext) {
      if (asked) one.add(groupPair(*at));
    }
    if (asked) all.add(one.take());
  }
  if (data) acutRelRb(data);
  return all.take();
}

Value objectList(const AcDbObject& object) {
  lisp::ListBuilder list;
  addGroups(list, object);
  return list.take();
}

Value objectList(const AcDbObject& object, const Value& applications) {
  lisp::ListBuilder list;
  addGroups(list, object);
  Value data = xdataList(object, applications);
  if (data.isTrue()) list.add(pair(-3, std::move(data)));
  return list.take();
}

int32_t blockFlags(const AcDbBlockTableRecord& block) {
  enum : int32_t { anonymous = 1, withAttributes = 2, external = 4 };
  return (block.isAnonymous() ? anonymous : 0) | (block.hasAttributeDefinitions() ? withAttributes : 0) |
         (block.isFromExternalReference() ? external : 0);
}

std::wstring typeNameOf(const AcDbObject& object) {
  if (const auto* const proxy = AcDbProxyEntity::cast(&object)) return proxy->originalDxfName();
  if (const auto* const proxy = AcDbProxyObject::cast(&object)) return proxy->originalDxfName();
  const AcRxClass* const own = object.isA();
  return own->dxfName() ? own->dxfName() : own->name();
}

}  // namespace host
