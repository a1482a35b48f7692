#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "platform/com/call_trace.h"
#include "platform/com/class_objects.h"
#include "platform/com/com_error.h"
#include "platform/com/owners.h"

namespace {

TEST(Bstr, CountsCharactersAndKeepsNuls) {
  const std::wstring text(L"a\0b", 3);
  const Bstr owned(text);
  EXPECT_EQ(SysStringLen(owned.get()), 3u);
  EXPECT_EQ(SysStringByteLen(owned.get()), 3 * sizeof(wchar_t));
  EXPECT_EQ(owned.get()[3], 0);
  EXPECT_EQ(owned.view(), text);
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  Bstr moved = Bstr(owned);
  moved = std::move(moved);
  EXPECT_EQ(moved.str(), text);
}

TEST(Variant, CopiesAreDeep) {
  COleVariant text(L"duct");
  COleVariant copy = text;
  EXPECT_NE(copy.bstrVal, text.bstrVal);
  EXPECT_EQ(copy.text(), L"duct");
  copy = copy;
  EXPECT_EQ(copy.text(), L"duct");
  COleVariant taken = std::move(text);
  EXPECT_EQ(text.vt, VT_EMPTY);
  EXPECT_EQ(taken.text(), L"duct");
}

struct Conversion {
  COleVariant from;
  VARTYPE to;
  HRESULT result;
  std::wstring text;  // of the value, as a text
};

TEST(Variant, Converts) {
  COleVariant money;
  money.vt = VT_CY;
  money.cyVal.int64 = -12500;
  const std::vector<Conversion> cases = {
      {COleVariant(2.5), VT_I4, S_OK, L"2"},
      {COleVariant(3.5), VT_I4, S_OK, L"4"},
      {COleVariant(-2.5), VT_I2, S_OK, L"-2"},
      {COleVariant(40000.0), VT_I2, DISP_E_OVERFLOW, L""},
      {COleVariant(LONG{256}), VT_UI1, DISP_E_OVERFLOW, L""},
      {COleVariant(std::nan("")), VT_I4, DISP_E_OVERFLOW, L""},
      {COleVariant(1e300), VT_R4, DISP_E_OVERFLOW, L""},
      {COleVariant(L" 12.75 "), VT_R8, S_OK, L"12.75"},
      {COleVariant(L"12,5"), VT_R8, DISP_E_TYPEMISMATCH, L""},
      {COleVariant(L"1e3"), VT_I4, S_OK, L"1000"},
      {COleVariant(L""), VT_I4, DISP_E_TYPEMISMATCH, L""},
      {COleVariant(L"true"), VT_BOOL, S_OK, L"True"},
      {COleVariant(L"0"), VT_BOOL, S_OK, L"False"},
      {COleVariant(LONG{5}), VT_BOOL, S_OK, L"True"},
      {COleVariant::boolean(true), VT_I4, S_OK, L"-1"},
      {COleVariant(), VT_I4, S_OK, L"0"},
      {COleVariant(), VT_BSTR, S_OK, L""},
      {COleVariant::null(), VT_I4, DISP_E_TYPEMISMATCH, L""},
      {money, VT_BSTR, S_OK, L"-1.25"},
      {money, VT_R8, S_OK, L"-1.25"},
      {COleVariant(0.1), VT_BSTR, S_OK, L"0.1"},
      {COleVariant(LONG{7}), VT_ARRAY | VT_VARIANT, DISP_E_TYPEMISMATCH, L""},
  };
  for (const Conversion& each : cases) {
    SCOPED_TRACE(testing::Message() << "type " << each.from.vt << " to " << each.to);
    COleVariant result(L"before");
    ASSERT_EQ(VariantChangeType(&result, &each.from, 0, each.to), each.result);
    if (FAILED(each.result)) {
      EXPECT_EQ(result.text(), L"before");
      continue;
    }
    EXPECT_EQ(result.vt, each.to);
    result.ChangeType(VT_BSTR);
    EXPECT_EQ(result.text(), each.text);
  }
}

std::wstring dateText(DATE date) {
  Bstr text;
  return SUCCEEDED(VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, text.put())) ? text.str() : L"bad";
}

TEST(Date, IsWrittenAndReadBack) {
  setenv("LC_ALL", "C", 1);
  struct {
    DATE date;
    std::wstring text;
  } const cases[] = {
      {45000, L"3/15/2023"},
      {45000.75, L"3/15/2023 6:00:00 PM"},
      {0.5, L"12:00:00 PM"},
      {0, L"12:00:00 AM"},
      {-1.25, L"12/29/1899 6:00:00 AM"},  // the fraction counts forward on the day before
      {36585, L"2/29/2000"},
      {45000.999999, L"3/16/2023"},  // rounds to the next midnight
      {-657434, L"1/1/100"},
      {2958465, L"12/31/9999"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(dateText(each.date), each.text);
    DATE back = 99;
    ASSERT_EQ(VarDateFromStr(each.text.c_str(), LOCALE_USER_DEFAULT, 0, &back), S_OK);
    EXPECT_NEAR(back, each.date, 1.0 / 86400);
  }
  for (const DATE bad : {-657435.0, 2958466.0, 1e300, std::nan("")}) EXPECT_EQ(dateText(bad), L"bad");
}

TEST(Date, ReadsOtherForms) {
  setenv("LC_ALL", "C", 1);
  DATE date;
  EXPECT_EQ(VarDateFromStr(L"2023-03-15T18:00", 0, 0, &date), S_OK);
  EXPECT_EQ(date, 45000.75);
  EXPECT_EQ(VarDateFromStr(L"15.3.23", 0, 0, &date), S_OK);
  EXPECT_EQ(date, 45000);
  for (const wchar_t* bad :
       {L"", L"2023", L"2/30/2023", L"13/1/2023", L"1/1/2023 25:00", L"1/1/2023 x", L"13:00 PM", L"1/1"}) {
    EXPECT_EQ(VarDateFromStr(bad, 0, 0, &date), DISP_E_TYPEMISMATCH) << Bstr(bad).str().size();
  }
}

TEST(SafeArray, OwnsItsElementsAndChecksBounds) {
  COleSafeArray array;
  array.CreateOneDim(VT_VARIANT, 3, nullptr, -1);
  EXPECT_EQ(array.GetLBound(), -1);
  EXPECT_EQ(array.GetUBound(), 1);
  const COleVariant name(L"ixLayer");
  array.PutElement(-1, &name);
  array.PutElement(-1, &name);
  const COleSafeArray copy = array;
  array.Clear();
  EXPECT_EQ(copy.variantAt(-1).text(), L"ixLayer");
  EXPECT_EQ(copy.variantAt(1).vt, VT_EMPTY);
  EXPECT_THROW(copy.variantAt(2), ComError);
  EXPECT_THROW(copy.variantAt(-2), ComError);
}

TEST(SafeArray, HoldsPlainTypesAndTexts) {
  const std::array<double, 3> numbers = {1.5, 2.5, 3.5};
  COleSafeArray reals;
  reals.CreateOneDim(VT_R8, 3, numbers.data());
  double value = 0;
  reals.GetElement(2, &value);
  EXPECT_EQ(value, 3.5);

  const Bstr one(L"one"), two(L"two");
  const BSTR texts[] = {one.get(), two.get()};
  COleSafeArray array;
  array.CreateOneDim(VT_BSTR, 2, texts);
  Bstr out;
  array.GetElement(1, out.put());
  EXPECT_EQ(out.view(), L"two");
}

TEST(SafeArray, RefusesWhatIsOutsideOrOfAnotherType) {
  COleSafeArray array;
  LONG index = 0;
  EXPECT_EQ(SafeArrayGetElement(nullptr, &index, nullptr), E_INVALIDARG);
  array.CreateOneDim(VT_BSTR, 2);
  Bstr out;
  for (const LONG outside :
       {LONG{-1}, LONG{2}, std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()}) {
    index = outside;
    EXPECT_EQ(SafeArrayPutElement(array.parray, &index, Bstr(L"x").get()), DISP_E_BADINDEX) << outside;
    EXPECT_EQ(SafeArrayGetElement(array.parray, &index, out.put()), DISP_E_BADINDEX) << outside;
  }
  EXPECT_THROW(array.variantAt(0), ComError) << "texts are no variants";
  array.Clear();
  EXPECT_TRUE(array.empty());
  array.Clear();

  // An array that holds an array is copied to its depth.
  COleSafeArray inner, outer;
  const COleVariant word(L"deep");
  inner.CreateOneDim(VT_VARIANT, 1, nullptr);
  inner.PutElement(0, &word);
  outer.CreateOneDim(VT_VARIANT, 1, nullptr);
  outer.PutElement(0, &inner);
  const COleSafeArray copy = outer;
  inner.Clear(), outer.Clear();
  EXPECT_EQ(COleSafeArray(copy.variantAt(0)).variantAt(0).text(), L"deep");
}

TEST(SafeArray, CantBeFreedWhileItsDataAreUsed) {
  COleSafeArray array;
  array.CreateOneDim(VT_VARIANT, 2);
  {
    const VariantElements elements(array);
    EXPECT_EQ(elements.size(), 2u);
    EXPECT_EQ(SafeArrayDestroy(array.parray), DISP_E_ARRAYISLOCKED);
  }
  COleVariant wrong(1.0);
  EXPECT_THROW(array.Attach(wrong), ComError);
  EXPECT_EQ(array.GetOneDimSize(), 2u);
}

TEST(Guid, ReadsWhatItWrites) {
  const GUID guid = interfaceId<IDispatch>;
  wchar_t text[39];
  EXPECT_EQ(StringFromGUID2(guid, text, 38), 0);
  ASSERT_EQ(StringFromGUID2(guid, text, 39), 39);
  EXPECT_STREQ(text, L"{00020400-0000-0000-C000-000000000046}");
  GUID back;
  EXPECT_EQ(CLSIDFromString(text, &back), S_OK);
  EXPECT_TRUE(back == guid);
  for (const wchar_t* bad :
       {L"", L"{", L"{00020400-0000-0000-C000-00000000004}", L"{00020400-0000-0000-C000-00000000004G}",
        L"{00020400-0000-0000-C000-000000000046}x"}) {
    EXPECT_EQ(CLSIDFromString(bad, &back), CO_E_CLASSSTRING);
  }
}

class Counted : public IUnknown {
 public:
  explicit Counted(int& alive) : alive_(alive) { ++alive_; }
  HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) override {
    *object = iid == interfaceId<IUnknown> ? this : nullptr;
    if (*object) AddRef();
    return *object ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) destroy();
    return left;
  }

 private:
  void destroy() {
    --alive_;
    delete this;
  }
  virtual ~Counted() = default;
  int& alive_;
  ULONG references_ = 1;
};

constexpr CLSID testClass = {0x12345678, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}};

TEST(ClassObject, LivesAsLongAsItsRegistrationAndItsReferences) {
  int alive = 0;
  {
    const ClassRegistration registration = registerClassObject(testClass, [&](const IID& iid, void** object) {
      const auto made = ComPtr<IUnknown>::attach(new Counted(alive));
      return made->QueryInterface(iid, object);
    });
    ComPtr<IUnknown> object = createObject<IUnknown>(testClass);
    ASSERT_TRUE(object);
    EXPECT_EQ(OleRun(object.get()), S_OK);
    COleVariant holder;
    holder.punkVal = ComPtr<IUnknown>(object).detach();
    holder.vt = VT_UNKNOWN;
    const COleVariant copy = holder;
    object = nullptr;
    EXPECT_EQ(alive, 1);
    EXPECT_FALSE(createObject<IDispatch>(testClass));  // made, asked in vain, and released
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
  void* none;
  EXPECT_EQ(CoCreateInstance(testClass, nullptr, CLSCTX_ALL, interfaceId<IUnknown>, &none),
            REGDB_E_CLASSNOTREG);
  setClassLibraryResolver([](const CLSID&) { return "/nowhere/library.so"; });
  EXPECT_EQ(CoCreateInstance(testClass, nullptr, CLSCTX_ALL, interfaceId<IUnknown>, &none), CO_E_DLLNOTFOUND);
  setClassLibraryResolver({});
}

TEST(ComErrorTest, KeepsResultAndInterface) {
  EXPECT_EQ(checkResult(S_FALSE), S_FALSE);
  try {
    checkResult(E_NOINTERFACE, interfaceId<IDispatch>);
    FAIL();
  } catch (const ComError& error) {
    EXPECT_EQ(error.result(), E_NOINTERFACE);
    EXPECT_TRUE(error.iid() == interfaceId<IDispatch>);
    EXPECT_STREQ(error.what(), "COM error 0x80004002 from interface {00020400-0000-0000-C000-000000000046}");
  }
}

TEST(CallTrace, GivesTheCallsOnce) {
  recordCall(L"Seek1", {COleVariant(L"ABC")});
  recordCall(L"Skip", {COleVariant(LONG{2})});
  const auto calls = takeTracedCalls();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].method, L"Seek1");
  EXPECT_EQ(calls[0].arguments[0].text(), L"ABC");
  EXPECT_EQ(calls[1].method, L"Skip") << "oldest first";
  EXPECT_TRUE(takeTracedCalls().empty());
}

TEST(CallTrace, DropsTheOldestOfTooMany) {
  constexpr size_t most = 100'000;
  for (size_t i = 0; i < most + 2; ++i) recordCall(std::to_wstring(i), {});
  const auto calls = takeTracedCalls();
  ASSERT_EQ(calls.size(), most);
  EXPECT_EQ(calls.front().method, L"2");
  EXPECT_EQ(calls.back().method, std::to_wstring(most + 1));
}

}  // namespace
