#include "zarbo/drawing/extended_data.h"

#include <algorithm>
#include <vector>

#include "brx/db_database.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/frame/object_args.h"
#include "zarbo/support/utilities.h"

/// Keys and values that the application hangs on entities, one behind the other in the entity's extended
/// data. The application registers the name itself.

namespace {

constexpr const ACHAR* applicationName = L"KORVANE";
constexpr int applicationGroup = 1001, stringGroup = 1000, realGroup = 1040, longGroup = 1071;

/// A list of the host's that the module frees.
class Buffers {
 public:
  explicit Buffers(resbuf* head) : head_(head) {}
  ~Buffers() {
    if (head_) acutRelRb(head_);
  }
  Buffers(const Buffers&) = delete;
  Buffers& operator=(const Buffers&) = delete;
  const resbuf* get() const { return head_; }

 private:
  resbuf* head_;
};

void appendGroup(LispList& list, int group, const LispAtom& value) {
  resbuf* const item = value.toBuffer();
  item->restype = group;
  appendBuffers(list, item);
}

/// The value behind a key; nil leaves the key out.
bool readValue(ArgCursor& cursor, const std::wstring& key, LispList& data) {
  std::wstring text;
  double real;
  int32_t integer;
  if (getString(cursor, text)) {
    appendGroup(data, stringGroup, key);
    appendGroup(data, stringGroup, text);
  } else if (getReal(cursor, real)) {
    appendGroup(data, stringGroup, key);
    appendGroup(data, realGroup, real);
  } else if (getLong(cursor, integer)) {
    appendGroup(data, stringGroup, key);
    appendGroup(data, longGroup, integer);
  } else if (cursor && cursor->restype == RTNIL) {
    skipItem(cursor);
  } else {
    return false;
  }
  return true;
}

bool readKeysAndValues(ArgCursor& cursor, LispList& data) {
  std::wstring key;
  while (getString(cursor, key)) {
    if (!readValue(cursor, key, data)) return false;
  }
  return true;
}

/// A new buffer of the value's type; null for a group that LISP has no type for.
resbuf* valueBuffer(const resbuf& item) {
  switch (resultTypeOfGroupCode(item.restype)) {
    case RTSTR:
      return LispAtom(item.resval.rstring).toBuffer();
    case RTREAL:
      return LispAtom(item.resval.rreal).toBuffer();
    case RTSHORT: {
      resbuf* const made = acutNewRb(RTSHORT);
      made->resval.rint = item.resval.rint;
      return made;
    }
    case RTLONG:
      return LispAtom(item.resval.rlong).toBuffer();
    case RT3DPOINT:
      return LispAtom::point(item.resval.rpoint[0], item.resval.rpoint[1], item.resval.rpoint[2]).toBuffer();
    default:
      return nullptr;
  }
}

bool isText(const resbuf& item) { return resultTypeOfGroupCode(item.restype) == RTSTR; }

/// Calls `visit(key, value)` for each key with an item behind it until it answers true. An item that is no
/// text stands out of line, and is stepped over alone.
template <class Visit>
void walkPairs(const resbuf* data, Visit visit) {
  const resbuf* item = data ? data->rbnext : nullptr;
  while (item && item->rbnext) {
    if (!isText(*item)) {
      item = item->rbnext;
      continue;
    }
    if (visit(std::wstring(item->resval.rstring), *item->rbnext)) return;
    item = item->rbnext->rbnext;
  }
}

/// The pairs of an entity whose keys `wanted` takes, as the result of the call; nil without data.
template <class Wanted>
void returnPairs(AcDbObjectId id, Wanted wanted) {
  const AcDbObjectPointer<AcDbObject> object(id);
  if (object.openStatus() != Acad::eOk) return;
  const Buffers data(object->xData(applicationName));
  if (!data.get()) return;
  LispList list;
  beginList(list);
  walkPairs(data.get(), [&](const std::wstring& key, const resbuf& value) {
    if (key.empty() || !wanted(key)) return false;
    if (resbuf* const made = valueBuffer(value)) appendPair(list, key, made);
    return false;
  });
  endListAndReturn(list);
}

}  // namespace

int zbXdputList() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  LispList data;
  appendGroup(data, applicationGroup, applicationName);
  if (skipListBegin(args.cursor)) {
    if (!readKeysAndValues(args.cursor, data)) return done;
  } else if (args.cursor) {
    return done;
  }
  AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
  if (object.openStatus() != Acad::eOk) return done;
  object->setXData(data.head);
  acedRetT();
  return done;
}

int zbXdget() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  std::wstring wanted;
  if (!getObjectId(args.cursor, id) || !getString(args.cursor, wanted)) return wrongType;
  const AcDbObjectPointer<AcDbObject> object(id);
  if (object.openStatus() != Acad::eOk) return done;
  const Buffers data(object->xData(applicationName));
  walkPairs(data.get(), [&](const std::wstring& key, const resbuf& value) {
    if (key != wanted) return false;
    const Buffers found(valueBuffer(value));
    if (found.get()) acedRetVal(found.get());
    return true;
  });
  return done;
}

int zbXdgetList() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  if (!skipListBegin(args.cursor)) return done;
  std::vector<std::wstring> keys;
  for (std::wstring key; getString(args.cursor, key);) keys.push_back(key);
  returnPairs(
      id, [&](const std::wstring& key) { return std::find(keys.begin(), keys.end(), key) != keys.end(); });
  return done;
}

int zbXdgetAll() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  returnPairs(id, [](const std::wstring&) { return true; });
  return done;
}
