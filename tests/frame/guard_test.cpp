#include <gtest/gtest.h>

#include <stdexcept>

#include "host/console/command_line.h"
#include "tests/support/recording_call.h"
#include "zarbo/frame/framework_exception.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/list_builder.h"

namespace {

template <class Work>
std::wstring returned(Work work) {
  return served(nullptr, work);
}

TEST(Guard, MapsCodesToMessagesAndResultWords) {
  struct Case {
    int code, word;
    const wchar_t* printed;
  };
  for (const Case& each :
       {Case{0, RSRSLT, L""}, Case{1, RSERR, L"\nToo few arguments passed.\n"},
        Case{2, RSERR, L"\nWrong type of arguments passed.\n"}, Case{3, RSERR, L"\nBad data passed .\n"},
        Case{4, RSERR, L""}, Case{5, RSRSLT, L""}, Case{-1, RSRSLT, L""}}) {
    host::commandLine().takeRecord();
    host::commandLine().showTextWindow(false);
    EXPECT_EQ(guardResult(each.code), each.word);
    EXPECT_EQ(host::commandLine().takeRecord(), each.printed);
    EXPECT_EQ(host::commandLine().textWindowShown(), each.code == 4);
  }
}

TEST(Guard, AnnouncesExceptionsAndLetsThemPass) {
  host::commandLine().takeRecord();
  EXPECT_THROW(guardedCall([]() -> int { throw std::runtime_error("x"); }), std::runtime_error);
  EXPECT_EQ(host::commandLine().takeRecord(), L"\nError");
  static CException problem(L"no template");
  try {
    guardedCall([]() -> int { throw &problem; });
    FAIL();
  } catch (CException* passed) {
    EXPECT_EQ(passed, &problem) << "the same object";
  }
  EXPECT_EQ(host::commandLine().takeRecord(), L"\nGeneral Exception");
}

TEST(ListBuilder, BuildsPairsAndLists) {
  EXPECT_EQ(returned([] {
              LispList list;
              beginList(list);
              const ads_name none = {0, 0};
              appendPair(list, L"a", 1);
              appendPair(list, 70, L"text");
              appendPair(list, std::wstring(L"r"), 0.5);
              appendPair(list, L"e", LispAtom::entity(none));
              appendValue(list, true);
              appendValue(list, std::wstring_view(L"cut here").substr(0, 3));
              endListAndReturn(list);
              EXPECT_EQ(list.head, nullptr);
            }),
            L"( ( a . 1 ) ( 70 . text ) ( r . 0.500000 ) ( e . nil ) T cut ) ");
}

TEST(ListBuilder, NumbersBeyond16BitsGoBackAsReals) {
  EXPECT_EQ(returned([] { retNumber(32767); }), L"32767 ");
  EXPECT_EQ(returned([] { retNumber(32768); }), L"32768.000000 ");
  EXPECT_EQ(returned([] { retNumber(-32768); }), L"-32768 ");
  EXPECT_EQ(returned([] { retNumber(-32769); }), L"-32769.000000 ");
}

}  // namespace
