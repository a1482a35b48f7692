#include "zarbo/frame/variant_values.h"

#include <cmath>
#include <vector>

#include "brx/lisp_calls.h"
#include "platform/text/trim.h"
#include "zarbo/frame/list_builder.h"

namespace {

std::wstring_view textOf(const VARIANT& value) {
  return value.vt == VT_BSTR ? viewOf(value.bstrVal) : std::wstring_view();
}

double orZero(double value) { return std::isnan(value) ? 0.0 : value; }

resbuf* dateToResbuf(DATE date) {
  Bstr text;
  if (FAILED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, text.put()))) {
    return LispAtom(L"Invalid DateTime").toBuffer();
  }
  std::wstring_view shown = text.view();
  while (!shown.empty() && shown.back() == L' ') shown.remove_suffix(1);
  return LispAtom(shown).toBuffer();
}

/// `text` is a BSTR's.
resbuf* textToResbuf(std::wstring_view text, bool trim) {
  const std::wstring_view shown = trim ? trimmedRight(text) : text == L" " ? std::wstring_view() : text;
  return (shown.size() == text.size() ? LispAtom::ended(shown) : LispAtom(shown)).toBuffer();
}

/// Fields so named keep the blanks at the end of their texts.
bool keepsBlanks(std::wstring_view name) { return name.starts_with(L"s_"); }

void appendField(LispList& list, const VARIANT& name, const VARIANT& value) {
  const std::wstring_view key = textOf(name);
  appendPair(list, LispAtom::ended(key), variantToResbuf(value, !keepsBlanks(key)));
}

/// Puts the collected values into one array; they are moved, not copied.
void toArray(std::vector<COleVariant>& values, COleVariant& array) {
  COleSafeArray made;
  made.CreateOneDim(VT_VARIANT, static_cast<ULONG>(values.size()));
  const VariantElements slots(made);
  for (ULONG i = 0; i < slots.size(); ++i) slots[i] = values[i].Detach();
  array.Attach(made);
}

/// The text that stands for a list's parenthesis or dot; null for any other buffer.
const wchar_t* structureMark(int type) {
  switch (type) {
    case RTLB:
      return listBeginMark;
    case RTLE:
      return listEndMark;
    case RTDOTE:
      return listDotMark;
    default:
      return nullptr;
  }
}

/// Takes one name and its value; false when they are not in order.
bool takeField(ArgCursor& cursor, std::vector<COleVariant>& values) {
  bool success = true;
  std::wstring name;
  if (!getString(cursor, name)) {
    acedRetNil();
    success = false;
    skipItem(cursor);
  }
  while (cursor && cursor->restype == RTDOTE) skipItem(cursor);
  if (!cursor) return false;
  COleVariant value;
  if (cursor->restype == RTLE) {
    value = COleVariant::null();
  } else if (!resbufToVariant(*cursor, value)) {
    skipItem(cursor);
    return false;
  }
  skipItem(cursor);
  values.emplace_back(name);
  values.push_back(std::move(value));
  return success;
}

}  // namespace

bool resbufToVariant(const resbuf& buffer, COleVariant& value) {
  switch (buffer.restype) {
    case RTREAL:
      value = COleVariant(buffer.resval.rreal);
      return true;
    case RTSHORT:
      value = COleVariant(LONG{buffer.resval.rint});
      return true;
    case RTLONG:
      value = COleVariant(LONG{buffer.resval.rlong});
      return true;
    case RTSTR:
      value = COleVariant(buffer.resval.rstring);
      return true;
    case RTNIL:
      value.Clear();
      return true;
    case RTT:
      value = COleVariant::boolean(true);
      return true;
    default:
      return false;
  }
}

resbuf* variantToResbuf(const VARIANT& value, bool trim) {
  switch (value.vt) {
    case VT_I2:
      return LispAtom(value.iVal).toBuffer();
    case VT_I4:
      return LispAtom(value.lVal).toBuffer();
    case VT_UI1:
      return LispAtom(value.bVal).toBuffer();
    case VT_BOOL:
      return LispAtom(int{value.boolVal}).toBuffer();  // -1 for true, not T
    case VT_R4:
      return LispAtom(orZero(value.fltVal)).toBuffer();
    case VT_R8:
      return LispAtom(orZero(value.dblVal)).toBuffer();
    case VT_DATE:
      return dateToResbuf(value.date);
    case VT_BSTR:
      return textToResbuf(textOf(value), trim);
    default:
      return LispAtom(nullptr).toBuffer();
  }
}

bool fieldListToArray(ArgCursor& cursor, COleVariant& fields) {
  std::vector<COleVariant> values;
  bool success = true;
  while (true) {
    while (cursor && structureMark(cursor->restype)) skipItem(cursor);
    if (!cursor) break;
    if (!takeField(cursor, values)) success = false;
  }
  if (!success || values.empty()) return false;
  toArray(values, fields);
  return true;
}

bool treeToArray(ArgCursor& cursor, COleVariant& tree) {
  std::vector<COleVariant> values;
  for (; cursor; skipItem(cursor)) {
    COleVariant value;
    if (const wchar_t* const mark = structureMark(cursor->restype)) {
      value = COleVariant(mark);
    } else if (!resbufToVariant(*cursor, value)) {
      return false;
    }
    values.push_back(std::move(value));
  }
  toArray(values, tree);
  return true;
}

void recordToPairs(const VARIANT& record) {
  const VariantElements all(record);
  LispList list;
  beginList(list);
  for (ULONG i = 0; i + 1 < all.size(); i += 2) appendField(list, all[i], all[i + 1]);
  endListAndReturn(list);
}

void arrayToList(const VARIANT& names) {
  const VariantElements all(names);
  LispList list;
  beginList(list);
  for (const VARIANT& each : all) appendBuffers(list, variantToResbuf(each, true));
  endListAndReturn(list);
}

namespace {

/// The list's content, in buffers. The elements are freed on the way.
void appendRows(LispList& list, const VariantElements& all) {
  bool inRecord = false;
  for (ULONG i = 0; i < all.size(); ++i) {
    if (textOf(all[i]) == newRecordMark) {
      if (inRecord) appendMark(list, RTLE);
      appendMark(list, RTLB);
      inRecord = true;
    } else if (!inRecord) {
      appendBuffers(list, variantToResbuf(all[i], true));
    } else if (i + 1 < all.size()) {
      appendField(list, all[i], all[i + 1]);
      VariantClear(&all[i++]);
    }
    VariantClear(&all[i]);
  }
  if (inRecord) appendMark(list, RTLE);
}

}  // namespace

void rowsToList(COleVariant rows) {
  LispList list;
  beginList(list);
  appendRows(list, VariantElements(rows));
  rows.Clear();
  endListAndReturn(list);
}

bool elementToLong(const VARIANT& array, ULONG place, int32_t& value) {
  const VariantElements all(array);
  COleVariant number;
  if (place >= all.size() || FAILED(VariantChangeType(&number, &all[place], 0, VT_I4))) return false;
  value = number.lVal;
  return true;
}
