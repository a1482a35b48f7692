#include "engine/engine_object.h"
#include "platform/text/utf.h"

HRESULT EngineObject::SetTable(BSTR table, BSTR index, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    database();
    if (cursor_ && SysStringLen(index) == 0 && cursor_->isOn(viewOf(table))) return;
    const std::string name = toUtf8(viewOf(table)), indexName = toUtf8(viewOf(index));
    Transaction transaction(database(), Transaction::Kind::Read, Access::Read);
    catalog_->refresh();
    cursor_ = std::make_unique<Cursor>(*database_, *catalog_, name, indexName);
  });
}

HRESULT EngineObject::MoveTop(VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [](Cursor& at) { at.moveTop(); });
}

HRESULT EngineObject::MoveBottom(VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [](Cursor& at) { at.moveBottom(); });
}

HRESULT EngineObject::Skip(LONG count, VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [&](Cursor& at) { at.skip(count); });
}

HRESULT EngineObject::CurrentRecord(VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [](Cursor& at) { at.read(); });
}

HRESULT EngineObject::seek(const std::vector<const VARIANT*>& keys, VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [&](Cursor& at) {
    std::vector<COleVariant> owned;
    for (const VARIANT* key : keys) owned.push_back(key ? COleVariant(*key) : COleVariant());
    at.seek(owned);
  });
}

HRESULT EngineObject::Seek1(VARIANT key, VARIANT* record, VARIANT_BOOL* ok) {
  return seek({&key}, record, ok);
}

HRESULT EngineObject::Seek2(VARIANT key1, VARIANT key2, VARIANT* record, VARIANT_BOOL* ok) {
  return seek({&key1, &key2}, record, ok);
}

HRESULT EngineObject::Seek3(VARIANT key1, VARIANT key2, VARIANT key3, VARIANT* record, VARIANT_BOOL* ok) {
  return seek({&key1, &key2, &key3}, record, ok);
}

HRESULT EngineObject::SeekN(VARIANT* key1, VARIANT* key2, VARIANT* key3, VARIANT* key4, VARIANT* key5,
                            VARIANT* key6, VARIANT* key7, VARIANT* key8, VARIANT* key9, VARIANT* key10,
                            LONG count, VARIANT* record, VARIANT_BOOL* ok) {
  std::vector<const VARIANT*> keys = {key1, key2, key3, key4, key5, key6, key7, key8, key9, key10};
  // A wrong number is refused by the search itself.
  keys.resize(count < 1 || count > 10 ? 0 : static_cast<size_t>(count));
  return seek(keys, record, ok);
}

HRESULT EngineObject::Append(VARIANT fields, VARIANT_BOOL flag, VARIANT* record, VARIANT_BOOL* ok) {
  return attempt(record, ok, [&] { return cursor().append(fields, flag != VARIANT_FALSE); });
}

HRESULT EngineObject::Replace(VARIANT fields, VARIANT* record, VARIANT_BOOL* ok) {
  return moveAndRead(record, ok, [&](Cursor& at) { at.replace(fields); });
}

HRESULT EngineObject::FieldValue(BSTR field, VARIANT value, VARIANT_BOOL* ok) {
  return attempt(ok, [&] { cursor().replace(arrayOfPairs({{toUtf8(viewOf(field)), COleVariant(value)}})); });
}

HRESULT EngineObject::DeleteRecord(VARIANT_BOOL* ok) {
  return attempt(ok, [&] { cursor().remove(); });
}

HRESULT EngineObject::RecordCount(LONG* count, VARIANT_BOOL* ok) {
  if (!count) return E_POINTER;
  *count = 0;
  return attempt(ok, [&] { *count = static_cast<LONG>(cursor().count()); });
}

HRESULT EngineObject::PositionFlagA(VARIANT_BOOL* afterLast) {
  VARIANT_BOOL ok;
  if (!afterLast) return E_POINTER;
  *afterLast = VARIANT_TRUE;
  return attempt(&ok, [&] { *afterLast = !cursor_ || cursor().afterLast() ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT EngineObject::PositionFlagB(VARIANT_BOOL* beforeFirst) {
  VARIANT_BOOL ok;
  if (!beforeFirst) return E_POINTER;
  *beforeFirst = VARIANT_TRUE;
  return attempt(&ok,
                 [&] { *beforeFirst = !cursor_ || cursor().beforeFirst() ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT EngineObject::ReleaseTable(BSTR table) {
  if (cursor_ && cursor_->isOn(viewOf(table))) cursor_.reset();
  return S_OK;
}

HRESULT EngineObject::CloseTable(VARIANT_BOOL* failed) {
  if (!failed) return E_POINTER;
  VARIANT_BOOL ok;
  attempt(&ok, [&] {
    cursor();
    cursor_.reset();
  });
  *failed = ok ? VARIANT_FALSE : VARIANT_TRUE;
  return S_OK;
}

HRESULT EngineObject::CloseAllTables(VARIANT_BOOL* failed) {
  if (!failed) return E_POINTER;
  VARIANT_BOOL ok;
  attempt(&ok, [&] {
    database();
    cursor_.reset();
  });
  *failed = ok ? VARIANT_FALSE : VARIANT_TRUE;
  return S_OK;
}
