#include "zarbo/support/report_text.h"

#include <gtest/gtest.h>

#include "zarbo/support/scrambled.h"

namespace {

TEST(ReportText, ChecksAddressesInTheirOrder) {
  struct Case {
    const wchar_t *email, *again;
    int fault;
  };
  const Case cases[] = {
      {L"", L"x", 2},
      {L"a.b", L"a.b", 1},
      {L"a@b.c@d", L"a@b.c@d", 1},
      {L"me@korvane.example", L"other", 4},
      {L"ME@Korvane.Example", L"", 4},
      {L"me+you@KORVANE.example", L"", 4},  // before the letters are looked at
      {L"me@mail.korvane.example", L"me@mail.korvane.example", 0},
      {L"a@b", L"a@b", 1},
      {L"a.b@c", L"a.b@c", 1},
      {L"@.", L"@.", 0},
      {L"a+b@c.d", L"a+b@c.d", 1},
      {L"\u00e4@b.c", L"\u00e4@b.c", 1},
      {L"a b@c.d", L"a b@c.d", 1},
      {L"a@b.c", L"A@B.C", 3},
      {L"A_1-z@b.c", L"A_1-z@b.c", 0},
  };
  for (const Case& each : cases)
    EXPECT_EQ(static_cast<int>(addressFault(each.email, each.again, L"korvane.example")), each.fault)
        << each.email;
  EXPECT_EQ(messageOf(AddressFault::supportsOwn),
            L"Enter your email address. We will use this email address to reply to you.");
}

TEST(ReportText, CutsTheSubjectAtLinesAndSentences) {
  const std::wstring digits(120, L'7');
  const std::pair<std::wstring, std::wstring> cases[] = {
      {L"", L"KV Bug"},
      {L"Hello. More", L"KV Bug: Hello"},
      {L"One line\r\nTwo", L"KV Bug: One line"},
      {L"Really? Yes!\r\nx", L"KV Bug: Really"},
      {L"\nrest", L"KV Bug: "},
      {L"\n.rest", L"KV Bug: "},
      {L"\r\nrest", L"KV Bug: "},
      {L".", L"KV Bug: "},
      {digits, L"KV Bug: " + digits.substr(0, 100)},
      {digits.substr(0, 100) + L"\r\n", L"KV Bug: " + digits.substr(0, 100)},
      {digits.substr(0, 98) + L"\r\nx", L"KV Bug: " + digits.substr(0, 98)},
      {digits.substr(0, 100) + L".", L"KV Bug: " + digits.substr(0, 100)},
  };
  for (const auto& [words, subject] : cases) EXPECT_EQ(subjectOfReport(1, words), subject) << words;
  EXPECT_EQ(subjectOfReport(0, L""), L"KV Project");
  for (const int mode : {4, 5, 2, -1}) EXPECT_EQ(subjectOfReport(mode, L""), L"KV Email") << mode;
}

TEST(ReportText, NamesArchives) {
  struct Case {
    const wchar_t *user, *suffix, *archive;
  };
  const Case cases[] = {
      {L"a/b", L"", L"ab.zip"},
      {L" Ann ", L"2024", L"Ann 2024.zip"},
      {L"\\/?:*\"<>|", L"", L"KV Attachment.zip"},
      {L"", L"suffix", L"KV Attachment suffix.zip"},
      {L"J\u00fcrgen \U0001f600", L"", L"J\u00fcrgen \U0001f600.zip"},
  };
  for (const Case& each : cases) EXPECT_EQ(archiveNameOf(each.user, each.suffix), each.archive);
}

TEST(Scrambled, MovesEachCodeByOne) {
  EXPECT_EQ(scrambled(L"mail.example"), L"nbjm/fybnqmf");
  EXPECT_EQ(unscrambled(L"nbjm/fybnqmf"), L"mail.example");
  for (const std::wstring& text :
       {std::wstring(L"\u00fc\U0001f600z"), std::wstring(L"\uffff\0x", 3), std::wstring()})
    EXPECT_EQ(unscrambled(scrambled(text)), text);
}

}  // namespace
