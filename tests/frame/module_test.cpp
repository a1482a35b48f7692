#include <dlfcn.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <filesystem>

#include <map>

#include "brx/lisp_calls.h"
#include "host/calls/served_call.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/rx/modules.h"
#include "platform/com/class_objects.h"
#include "tests/support/fake_object.h"
#include "zarbo/module/companion.h"

namespace {

using Functions = std::map<std::wstring, std::pair<host::Application*, int>>;

/// Keeps what modules define; calls nothing.
class NamesOnly : public host::DocumentLisp {
 public:
  Functions functions;
  void define(const std::wstring& name, host::Application& application, int code) override {
    functions[name] = {&application, code};
  }
  void undefine(const std::wstring& name, host::Application&, int) override { functions.erase(name); }
  void forget(host::Application& application) override {
    std::erase_if(functions, [&](const auto& each) { return each.second.first == &application; });
  }
  bool invoke(const resbuf&, resbuf*&) override { return false; }
  bool takeInterrupt() override { return false; }
};

/// A call with real arguments that keeps whether the result was T, nil or something else.
class PlainCall : public host::ServedCall {
 public:
  std::vector<double> numbers;
  int type = RTNONE;
  double real = 0;
  int functionCode() const override { return 0; }
  resbuf* arguments() const override {
    resbuf* head = nullptr;
    for (auto each = numbers.rbegin(); each != numbers.rend(); ++each) {
      resbuf* const next = acutBuildList(RTREAL, *each, RTNONE);
      next->rbnext = head;
      head = next;
    }
    return head;
  }
  void setResult(const resbuf* value) override {
    type = value ? value->restype : int{RTNIL};
    if (type == RTREAL) real = value->resval.rreal;
  }
  void setListResult(const resbuf*) override { type = RTLB; }
};

class ModuleTest : public testing::Test {
 protected:
  void SetUp() override {
    host::setDocumentLispMaker([] { return std::make_unique<NamesOnly>(); });
    host::documents().create(L"");
    host::commandLine().takeRecord();
    host::commandLine().setShown(false);
  }
  void TearDown() override {
    host::documents().closeAll();
    host::documents().discardClosed();
    host::modules().unloadAll();
    host::setDocumentLispMaker({});
  }

  static Functions& functions(host::Document& document) {
    return static_cast<NamesOnly*>(document.lisp())->functions;
  }
  static Functions& functions() { return functions(*host::documents().current()); }
  static bool load() {
    std::wstring problem;
    return host::modules().load(L"zarbo", problem);
  }
  static int call(const std::wstring& name, PlainCall& served) {
    const auto [application, code] = functions().at(name);
    const host::ServingGuard serving(served);
    return application->functions.at(static_cast<size_t>(code))();
  }
};

TEST_F(ModuleTest, DefinesBothTablesForEachDrawingUnderTheSameCodes) {
  ASSERT_TRUE(load()) << "the solid module is missing, and that is no reason to fail";
  EXPECT_EQ(host::commandLine().takeRecord(), L"\nLoading Korvane Zarbo (Jet64)");
  EXPECT_EQ(functions().size(), 63u + 108u);
  EXPECT_EQ(functions().at(L"zb_append").second, 0);
  EXPECT_EQ(functions().at(L"zb_seek").second, 12);
  EXPECT_EQ(functions().at(L"zb_relationInfo").second, 62);
  EXPECT_GE(functions().at(L"asin").second, 63);

  const Functions first = functions();
  host::documents().create(L"Second.dwg");
  EXPECT_EQ(host::commandLine().takeRecord(), L"\nLoading Korvane Zarbo (Jet64)");
  EXPECT_EQ(functions(), first);
}

TEST_F(ModuleTest, TellsOfItsFunctionsAsLongAsItIsLoaded) {
  ASSERT_TRUE(load());
  host::Application& application = *functions().at(L"zb_seek").first;
  for (const wchar_t* name : {L"zb_seek", L"ZB_SEEK"}) {
    const FunctionHelp* const help = application.helpOn(name);
    ASSERT_TRUE(help) << "whatever the case: LISP's names are in capitals";
    EXPECT_STREQ(help->arguments, L"key …");
  }
  EXPECT_TRUE(application.helpOn(L"ACDBCURVE::GETLENGTH"));
  EXPECT_FALSE(application.helpOn(L"zb_see"));
  std::wstring problem;
  ASSERT_TRUE(host::modules().unload(L"zarbo", problem));
  EXPECT_FALSE(application.helpOn(L"zb_seek"));
}

TEST_F(ModuleTest, CanBeUnloadedAndLoadedAgain) {
  ASSERT_TRUE(load());
  std::wstring problem;
  ASSERT_TRUE(host::modules().unload(L"zarbo", problem));
  EXPECT_TRUE(functions().empty());
  ASSERT_TRUE(load());
  PlainCall served;
  served.numbers = {2.0, 3.0};
  EXPECT_EQ(call(L"kv::pow", served), RSRSLT);
  EXPECT_EQ(served.real, 8.0);
}

TEST_F(ModuleTest, RowsWithoutAConnectionAnswerNil) {
  ASSERT_TRUE(load());
  for (const wchar_t* name : {L"zb_top", L"zb_count", L"zb_mdb"}) {
    PlainCall served;
    EXPECT_EQ(call(name, served), RSRSLT);
    EXPECT_EQ(served.type, RTNIL);
  }
  PlainCall readonly;
  EXPECT_EQ(call(L"zb_readonly", readonly), RSRSLT);
  EXPECT_EQ(readonly.type, RTT);
}

TEST_F(ModuleTest, AppendWithoutAConnectionEndsInAnAnnouncedException) {
  ASSERT_TRUE(load());
  host::commandLine().takeRecord();
  PlainCall served;
  served.numbers = {1.0};
  EXPECT_EQ(call(L"zb_append", served), RSRSLT) << "no field list: nil before the connection is asked for";
  EXPECT_EQ(host::commandLine().takeRecord(), L"");
}

TEST_F(ModuleTest, ExportsTheConventionsOfAModule) {
  const auto file = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "zarbo.so";
  void* const library = dlopen(file.c_str(), RTLD_NOW);
  ASSERT_TRUE(library) << dlerror();
  using Version = int (*)(int32_t*, int32_t*, int32_t*, int32_t*);
  for (const char* name : {"acrxGetApiVersion", "odrxGetAPIVersion"}) {
    const auto version = reinterpret_cast<Version>(dlsym(library, name));
    ASSERT_TRUE(version);
    int32_t numbers[4] = {9, 9, 9, 9};
    EXPECT_EQ(version(&numbers[0], &numbers[1], &numbers[2], &numbers[3]), 0);
    EXPECT_THAT(numbers, testing::ElementsAre(21, 4, 0, 0));
  }
  using Maker = OdRxModule* (*)();
  const auto maker = reinterpret_cast<Maker>(dlsym(library, "odrxCreateModuleObject"));
  ASSERT_TRUE(maker);
  EXPECT_TRUE(std::unique_ptr<OdRxModule>(maker()));
  using Entry = int (*)(AcRx::AppMsgCode, void*);
  const auto entry = reinterpret_cast<Entry>(dlsym(library, "acrxEntryPoint"));
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry(AcRx::kQuitMsg, nullptr), 0) << "any other message does nothing";
  dlclose(library);
}

TEST_F(ModuleTest, ReportsModulesThatCannotBeLoaded) {
  std::wstring problem;
  EXPECT_FALSE(host::modules().load(L"/nowhere/zarbo.so", problem));
  EXPECT_EQ(problem, L"/nowhere/zarbo.so: not found");
  EXPECT_FALSE(host::modules().load(L"libplatform_com.so", problem));
  EXPECT_EQ(problem, L"libplatform_com.so: has no entry acrxEntryPoint");
  EXPECT_FALSE(host::modules().load(L"/proc/self/cmdline", problem));
}

/// Counts what the module does with its companion.
class Companion : public FakeObject<IZbCompanion> {
 public:
  std::wstring log;
  HRESULT startResult = S_OK;
  HRESULT STDMETHODCALLTYPE Start() override {
    log += L"start ";
    return startResult;
  }
  HRESULT STDMETHODCALLTYPE Stop() override {
    log += L"stop ";
    return S_OK;
  }
};

TEST_F(ModuleTest, StartsAndStopsItsCompanion) {
  Companion companion;
  const ClassRegistration registration = registerClassObject(
      companionClass, [&](const IID& iid, void** object) { return companion.QueryInterface(iid, object); });
  ASSERT_TRUE(load());
  EXPECT_EQ(companion.log, L"start ");
  std::wstring problem;
  ASSERT_TRUE(host::modules().unload(L"zarbo", problem));
  EXPECT_EQ(companion.log, L"start stop ");
  EXPECT_EQ(companion.references, 0u);

  companion.startResult = E_FAIL;
  host::commandLine().takeRecord();
  EXPECT_FALSE(load()) << "a failing start is a failing init";
  EXPECT_EQ(problem, L"");
}

}  // namespace
