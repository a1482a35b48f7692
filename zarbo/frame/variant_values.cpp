#include "zarbo/frame/variant_values.h"

#include <cmath>
#include <cwctype>
#include <span>
#include <vector>

#include "brx/lisp_calls.h"
#include "zarbo/frame/list_builder.h"

namespace {

/// The elements of an array of variants; none for any other variant.
class Elements {
 public:
  explicit Elements(const VARIANT& value) {
    if (V_VT(&value) != (VT_ARRAY | VT_VARIANT) || !V_ARRAY(&value)) return;
    LONG low = 0, high = -1;
    SAFEARRAY* const array = V_ARRAY(&value);
    void* data = nullptr;
    if (FAILED(SafeArrayGetLBound(array, 1, &low)) || FAILED(SafeArrayGetUBound(array, 1, &high))) return;
    if (high < low || FAILED(SafeArrayAccessData(array, &data))) return;
    locked_ = array;
    all_ = {static_cast<const VARIANT*>(data), static_cast<size_t>(high - low) + 1};
  }
  ~Elements() {
    if (locked_) SafeArrayUnaccessData(locked_);
  }
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;

  std::span<const VARIANT> all() const { return all_; }

 private:
  SAFEARRAY* locked_ = nullptr;
  std::span<const VARIANT> all_;
};

std::wstring_view textOf(const VARIANT& value) {
  if (V_VT(&value) != VT_BSTR || !V_BSTR(&value)) return {};
  return {V_BSTR(&value), SysStringLen(V_BSTR(&value))};
}

std::wstring_view trimmed(std::wstring_view text) {
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back()))) text.remove_suffix(1);
  return text;
}

double orZero(double value) { return std::isnan(value) ? 0.0 : value; }

resbuf* dateToResbuf(double date) {
  BSTR text = nullptr;
  constexpr LCID userDefault = 1024;
  if (FAILED(VarBstrFromDate(date, userDefault, 0, &text))) return LispAtom(L"Invalid DateTime").toBuffer();
  std::wstring_view shown(text, SysStringLen(text));
  while (!shown.empty() && shown.back() == L' ') shown.remove_suffix(1);
  resbuf* const made = LispAtom(shown).toBuffer();
  SysFreeString(text);
  return made;
}

resbuf* textToResbuf(std::wstring_view text, bool trim) {
  if (trim) return LispAtom(trimmed(text)).toBuffer();
  return LispAtom(text == L" " ? std::wstring_view() : text).toBuffer();
}

/// Fields so named keep the blanks at the end of their texts.
bool keepsBlanks(std::wstring_view name) { return name.starts_with(L"s_"); }

void appendField(LispList& list, const VARIANT& name, const VARIANT& value) {
  const std::wstring_view key = textOf(name);
  appendPair(list, key, variantToResbuf(value, !keepsBlanks(key)));
}

/// Puts the collected values into one array, the variants moved rather than copied.
bool toArray(std::vector<COleVariant>& values, COleVariant& array) {
  SAFEARRAY* const made = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (!made) return false;
  array.Clear();
  V_VT(&array) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&array) = made;
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(made, &data))) return false;
  VARIANT* const slots = static_cast<VARIANT*>(data);
  for (size_t i = 0; i < values.size(); ++i) slots[i] = values[i].Detach();
  SafeArrayUnaccessData(made);
  return true;
}

bool isStructure(int type) { return type == RTLB || type == RTLE || type == RTDOTE; }

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
    V_VT(&value) = VT_NULL;
  } else if (!resbufToVariant(*cursor, value)) {
    skipItem(cursor);
    return false;
  }
  skipItem(cursor);
  values.emplace_back(name.c_str());
  values.push_back(std::move(value));
  return success;
}

}  // namespace

bool resbufToVariant(const resbuf& buffer, COleVariant& value) {
  switch (buffer.restype) {
    case RTREAL:
      value = buffer.resval.rreal;
      return true;
    case RTSHORT:
      value = static_cast<int32_t>(buffer.resval.rint);
      return true;
    case RTLONG:
      value = buffer.resval.rlong;
      return true;
    case RTSTR:
      value = buffer.resval.rstring ? buffer.resval.rstring : L"";
      return true;
    case RTNIL:
      value.Clear();
      return true;
    case RTT:
      value.Clear();
      V_VT(&value) = VT_BOOL;
      V_BOOL(&value) = VARIANT_TRUE;
      return true;
    default:
      return false;
  }
}

resbuf* variantToResbuf(const VARIANT& value, bool trim) {
  switch (V_VT(&value)) {
    case VT_I2:
      return LispAtom(V_I2(&value)).toBuffer();
    case VT_I4:
      return LispAtom(V_I4(&value)).toBuffer();
    case VT_UI1:
      return LispAtom(V_UI1(&value)).toBuffer();
    case VT_BOOL:
      return LispAtom(static_cast<int>(V_BOOL(&value))).toBuffer();
    case VT_R4:
      return LispAtom(orZero(V_R4(&value))).toBuffer();
    case VT_R8:
      return LispAtom(orZero(V_R8(&value))).toBuffer();
    case VT_DATE:
      return dateToResbuf(V_DATE(&value));
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
    while (cursor && isStructure(cursor->restype)) skipItem(cursor);
    if (!cursor) break;
    if (!takeField(cursor, values)) success = false;
  }
  return success && !values.empty() && toArray(values, fields);
}

bool treeToArray(ArgCursor& cursor, COleVariant& tree) {
  std::vector<COleVariant> values;
  for (; cursor; skipItem(cursor)) {
    COleVariant value;
    switch (cursor->restype) {
      case RTLB:
        value = listBeginMark;
        break;
      case RTLE:
        value = listEndMark;
        break;
      case RTDOTE:
        value = listDotMark;
        break;
      default:
        if (!resbufToVariant(*cursor, value)) return false;
    }
    values.push_back(std::move(value));
  }
  return toArray(values, tree);
}

void recordToPairs(const VARIANT& record) {
  const Elements elements(record);
  const auto all = elements.all();
  LispList list;
  beginList(list);
  for (size_t i = 0; i + 1 < all.size(); i += 2) appendField(list, all[i], all[i + 1]);
  endListAndReturn(list);
}

void arrayToList(const VARIANT& names) {
  const Elements elements(names);
  LispList list;
  beginList(list);
  for (const VARIANT& each : elements.all()) appendBuffers(list, variantToResbuf(each, true));
  endListAndReturn(list);
}

void rowsToList(const VARIANT& rows) {
  const Elements elements(rows);
  const auto all = elements.all();
  LispList list;
  beginList(list);
  bool inRecord = false;
  for (size_t i = 0; i < all.size(); ++i) {
    if (V_VT(&all[i]) == VT_BSTR && textOf(all[i]) == newRecordMark) {
      if (inRecord) appendMark(list, RTLE);
      appendMark(list, RTLB);
      inRecord = true;
    } else if (!inRecord) {
      appendBuffers(list, variantToResbuf(all[i], true));
    } else if (i + 1 < all.size()) {
      appendField(list, all[i], all[i + 1]);
      ++i;
    }
  }
  if (inRecord) appendMark(list, RTLE);
  endListAndReturn(list);
}

bool elementToLong(const VARIANT& array, size_t index, int32_t& value) {
  const Elements elements(array);
  if (index >= elements.all().size()) return false;
  resbuf* const buffer = variantToResbuf(elements.all()[index], true);
  ArgCursor cursor = buffer;
  const bool success = getLong(cursor, value);
  acutRelRb(buffer);
  return success;
}
