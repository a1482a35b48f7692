#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/archive/archive_writer.h"
#include "platform/mail/conversation.h"
#include "platform/mail/encodings.h"
#include "platform/mail/headers.h"
#include "platform/mail/mail_transport.h"
#include "platform/text/utf.h"
#include "tests/support/mail_server.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

constexpr const char* secret = "s3cret!pass";

TEST(MailEncodings, KeepLinesShort) {
  EXPECT_EQ(withMailLineEnds("a\nb\r\nc\rd\n\n"), "a\r\nb\r\nc\r\nd\r\n\r\n");
  EXPECT_EQ(quotedPrintable("a=b \r\n\t\r\nend "), "a=3Db=20\r\n=09\r\nend=20");
  EXPECT_EQ(quotedPrintable(std::string(80, 'x')), std::string(75, 'x') + "=\r\nxxxxx");
  for (const size_t size : {0u, 1u, 2u, 3u, 56u, 57u, 58u, 114u, 1000u}) {
    const std::string lines = base64Lines(std::string(size, 'x'));
    EXPECT_EQ(lines.size(), sizeOfBase64Lines(size)) << size;
    EXPECT_LE(lines.find('\n'), lines.empty() ? std::string::npos : 77u);
  }
}

TEST(MailHeaders, EncodeWhatIsNotPlainAndNeverBreakALine) {
  EXPECT_EQ(headerText(L"KV Bug: it hurts"), "KV Bug: it hurts");
  EXPECT_EQ(headerText(L"one\r\nBcc: x\u0085y\u2028z"), "one  Bcc: x y z");
  EXPECT_EQ(headerText(L"\u00c4rger"), "=?UTF-8?B?w4RyZ2Vy?=");
  EXPECT_EQ(headerText(L"=?x"), "=?UTF-8?B?PT94?=") << "looks encoded";
  EXPECT_EQ(headerMailbox(L"A \"B\" C\\", "a@b.c"), "\"A \\\"B\\\" C\\\\\"\r\n <a@b.c>");
  EXPECT_EQ(headerMailbox(L"", "a@b.c"), "<a@b.c>");
  EXPECT_EQ(headerFileName(L"plan.dwg"), ";\r\n filename=\"plan.dwg\"");
  EXPECT_EQ(headerFileName(L"\U0001f600 \u00e4.zip"), ";\r\n filename*=UTF-8''%F0%9F%98%80%20%C3%A4.zip");
  EXPECT_THAT(headerFileName(std::wstring(100, L'a')), HasSubstr(";\r\n filename*1*="));
  for (const wchar_t* bad :
       {L"", L"a", L"@b.c", L"a@", L"a b@c.d", L"<a@b.c>", L"a@b.c\r\nDATA", L"\u00e4@b.c"})
    EXPECT_FALSE(mailAddress(bad)) << bad;
  setenv("TZ", "Asia/Kolkata", 1);
  EXPECT_EQ(headerDate(1700000000), "Wed, 15 Nov 2023 03:43:20 +0530");
  unsetenv("TZ");
}

TEST(MailConversation, ShowsNoSecret) {
  Conversation talk;
  talk.keepSecret("pass");
  talk.addReceived("220 hello\r\n");
  talk.addSent("EHLO me\r\n");
  talk.addReceived("250-me\r\n250 AUTH LOGIN\r\n");
  talk.addSent("AUTH LOGIN\r\n");
  talk.addReceived("334 VXNlcm5hbWU6\r\n");
  talk.addSent("cmVwb3J0cw==\r\n");
  talk.addReceived("334 UGFzc3dvcmQ6\r\n");
  talk.addSent("c2VjcmV0\r\n");
  talk.addReceived("535 not c2VjcmV0, not pass\xff\x01\r\n");
  EXPECT_STREQ(talk.step(), "log in");
  EXPECT_EQ(talk.lastAnswer(), "535 not ***, not ***\xff\x01");
  const std::string xml = talk.toXml();
  EXPECT_THAT(xml, HasSubstr("<line from=\"client\">AUTH ***</line>"));
  EXPECT_THAT(xml, HasSubstr("not ***\xEF\xBF\xBD\xEF\xBF\xBD</line>"));
  for (const char* each : {"cmVwb3J0cw", "c2VjcmV0", "VXNlcm5hbWU6", "pass"})
    EXPECT_THAT(xml, Not(HasSubstr(each)));
  talk.addSent("MAIL FROM:<a@b.c>\r\n");
  EXPECT_STREQ(talk.step(), "sender");
  talk.addSent("QUIT\r\n");
  talk.addReceived("221 bye\r\n");
  EXPECT_STREQ(talk.step(), "sender");
  EXPECT_THAT(talk.lastAnswer(), HasSubstr("535"));
  for (int i = 0; i < 100000; ++i) talk.addReceived("250-more of the same\r\n");
  EXPECT_LT(talk.toXml().size(), 100000u);
}

class Mail : public testing::Test {
 protected:
  static const TestCertificate& certificate() {
    static const TestCertificate instance;
    return instance;
  }

  void use(MailTransport& transport, const MailServer& server) {
    ASSERT_NE(server.port(), 0);
    transport.setServer(L"localhost");
    transport.setAccount(L"reports");
    transport.setPassword(fromUtf8(secret));
    transport.setPort(server.port());
    transport.setTrustFile(fromUtf8(certificate().file()));
  }

  static void fill(MailMessage& message) {
    message.setSubject(
        L"KV Bug: \u00c4rger mit Rohren \U0001f600 und einem Satz, der l\u00e4nger als eine Zeile ist");
    message.setText(L"first line\nsecond line\r\n.\n..dots\n\u00fcber 100 \u20ac\n\n" +
                    std::wstring(300, L'x') + L"\n");
    message.setSenderName(L"J\u00fcrgen \"J\" O'Neill\r\nBcc: x@y.z");
    message.setSenderAddress(L"juergen@office.example");
    message.addRecipient(L"", L"support@korvane.example");
  }

  std::string reportOf(const MailTransport& transport) {
    EXPECT_TRUE(transport.saveLastError(folder.wide("report.xml")));
    const std::string text = folder.read("report.xml");
    EXPECT_THAT(text, Not(HasSubstr(secret)));
    EXPECT_THAT(text, Not(HasSubstr(base64(secret))));
    EXPECT_THAT(text, Not(HasSubstr(base64(std::string("\0reports\0", 9) + secret))));
    EXPECT_EQ(std::system(
                  ("/usr/bin/python3 -c 'import sys, xml.dom.minidom; xml.dom.minidom.parse(sys.argv[1])' '" +
                   (folder / "report.xml").native() + "'")
                      .c_str()),
              0)
        << text;
    return text;
  }

  TemporaryFolder folder;
};

TEST_F(Mail, ArrivesAsItWasWritten) {
  const MailServer server("good", certificate());
  MailTransport transport;
  use(transport, server);
  std::string every;
  for (int i = 0; i < 70000; ++i) every += static_cast<char>(i * 7 % 256);
  folder.write("every.bin", every);
  folder.write("empty.txt", "");
  folder.write(
      "\u00e4 long name \U0001f600 that goes on and on until no line of a header can hold it any more.dwg",
      "dwg");
  MailMessage message;
  fill(message);
  std::wstring type;
  for (const auto& each : std::filesystem::directory_iterator(folder.path()))
    ASSERT_TRUE(message.addFile(fromUtf8(each.path().native()), type));
  ASSERT_TRUE(transport.verifyConnection()) << reportOf(transport);
  ASSERT_TRUE(transport.send(message)) << reportOf(transport);
  ASSERT_TRUE(transport.send(message)) << reportOf(transport);
  transport.close();
  EXPECT_EQ(server.received("connections"), "1");
  ASSERT_TRUE(server.hasMessage(2));
  EXPECT_EQ(server.received("1/Subject"), toUtf8(message.subject()));
  EXPECT_THAT(server.received("1/From"), HasSubstr("O'Neill  Bcc: x@y.z"));
  EXPECT_THAT(server.received("1/From"), HasSubstr("J\u00fcrgen"));
  EXPECT_EQ(server.received("1/To"), "support@korvane.example");
  EXPECT_EQ(server.received("1/envelope"), "juergen@office.example\nsupport@korvane.example\n");
  EXPECT_EQ(server.received("1/text"),
            "first line\nsecond line\n.\n..dots\n\u00fcber 100 \u20ac\n\n" + std::string(300, 'x') + "\n");
  EXPECT_EQ(server.received("1/defects"), "");
  EXPECT_EQ(server.received("1/date-is-aware"), "True");
  EXPECT_THAT(server.received("1/Message-ID"), HasSubstr("@office.example>"));
  EXPECT_NE(server.received("1/Message-ID"), server.received("2/Message-ID"));
  for (const auto& each : std::filesystem::directory_iterator(folder.path())) {
    const std::string name = each.path().filename();
    EXPECT_EQ(server.received("2/files/" + name), folder.read(name)) << name;
  }
}

TEST_F(Mail, CompressesAllAttachmentsIntoOne) {
  const MailServer server("good", certificate());
  MailTransport transport;
  use(transport, server);
  std::filesystem::create_directories(folder / "a");
  std::filesystem::create_directories(folder / "b");
  folder.write("a/plan.dwg", "one");
  folder.write("b/PLAN.dwg", "two");
  folder.write("b/x:y", "three");
  MailMessage message;
  fill(message);
  std::wstring type;
  for (const char* each : {"a/plan.dwg", "b/PLAN.dwg", "b/x:y"})
    ASSERT_TRUE(message.addFile(folder.wide(each), type));
  ASSERT_TRUE(message.compressAttachments(L"J\u00fcrgen \U0001f600.zip"));
  ASSERT_TRUE(transport.send(message)) << reportOf(transport);
  ArchiveWriter reader;
  ASSERT_TRUE(reader.open(fromUtf8((server.folder() / "1/files/J\u00fcrgen \U0001f600.zip").native())));
  ASSERT_TRUE(reader.extractAll(folder.wide("out")));
  EXPECT_EQ(folder.read("out/plan.dwg"), "one");
  EXPECT_EQ(folder.read("out/PLAN (2).dwg"), "two");
  EXPECT_EQ(folder.read("out/x_y"), "three");
}

TEST_F(Mail, RefusesFilesThatCannotBeSent) {
  MailMessage message;
  std::wstring type;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const auto& each :
       {folder.wide("missing"), folder.path().wstring(), folder.wide("pipe"), std::wstring()})
    EXPECT_FALSE(message.addFile(each, type)) << each;
  folder.write("there", "text");
  ASSERT_TRUE(message.addFile(folder.wide("there"), type));
  EXPECT_EQ(type, L"application/octet-stream");
  std::filesystem::remove(folder / "there");
  EXPECT_FALSE(message.compressAttachments(L"x.zip"));
  ASSERT_TRUE(message.saveLastError(folder.wide("report.xml")));
  EXPECT_THAT(folder.read("report.xml"), HasSubstr("/there"));
}

/// A failure of each kind, and what its report names.
struct Failure {
  const char* mode;
  const char* step;
  const char* words;
};
class MailFailure : public Mail, public testing::WithParamInterface<Failure> {};

TEST_P(MailFailure, IsToldAndLosesNothing) {
  const MailServer server(GetParam().mode, certificate());
  MailTransport transport({5s, 2s});
  use(transport, server);
  folder.write("file", std::string(5000, 'x'));
  MailMessage message;
  fill(message);
  std::wstring type;
  ASSERT_TRUE(message.addFile(folder.wide("file"), type));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(transport.verifyConnection() && transport.send(message));
  const std::string report = reportOf(transport);
  EXPECT_THAT(report, HasSubstr("<step>" + std::string(GetParam().step) + "</step>"));
  EXPECT_THAT(report, HasSubstr("<server>localhost:" + std::to_string(server.port())));
  EXPECT_THAT(report, HasSubstr(GetParam().words));
  EXPECT_LT(report.size(), 100000u);
  EXPECT_FALSE(server.hasMessage(1));
  transport.close();
  EXPECT_LT(std::chrono::steady_clock::now() - start, 15s);
  EXPECT_EQ(message.attachments().size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Modes, MailFailure,
                         testing::Values(Failure{"no-tls", "greeting", "STARTTLS"},  //
                                         Failure{"refuse-login", "log in", "535 5.7.8 no"},
                                         Failure{"refuse-recipient", "recipient",
                                                 "550 5.1.1 no such mailbox"},
                                         Failure{"refuse-data", "message", "554 5.7.1 not wanted here"},
                                         Failure{"small", "sender", "552"},                        //
                                         Failure{"mute", "connect", "<words>"},                    //
                                         Failure{"mute-at-end", "message", "<words>"},             //
                                         Failure{"drop", "connect", "<words>"},                    //
                                         Failure{"drop-in-data", "message", "<words>"},            //
                                         Failure{"garbage", "connect", "<line from=\"server\">"},  //
                                         Failure{"megabytes", "connect", "<cut/>"}),
                         [](const auto& each) {
                           std::string name = each.param.mode;
                           std::erase(name, '-');
                           return name;
                         });

TEST_F(Mail, TrustsOnlyTheServersOwnCertificate) {
  const TestCertificate other("elsewhere.example");
  const MailServer server("good", certificate()), impostor("good", other);
  MailTransport transport;
  use(transport, server);
  transport.setTrustFile(L"");
  EXPECT_FALSE(transport.verifyConnection());
  EXPECT_THAT(reportOf(transport), HasSubstr("<step>secure connection</step>"));
  transport.setTrustFile(fromUtf8(other.file()));
  EXPECT_FALSE(transport.verifyConnection());
  use(transport, impostor);
  transport.setTrustFile(fromUtf8(other.file()));
  EXPECT_FALSE(transport.verifyConnection()) << "trusted, but of another host";
  transport.setTrustFile(folder.wide("missing"));
  EXPECT_FALSE(transport.verifyConnection());
  use(transport, server);
  EXPECT_TRUE(transport.verifyConnection()) << reportOf(transport);
}

/// Counts what it is told, and stops after so many times.
struct Watcher : MailProgress {
  int patience = 1 << 30;
  int times = 0;
  int64_t last = 0, total = 0;
  bool sending(int64_t sent, int64_t of) override {
    if (of == 0) return true;
    EXPECT_LE(last, sent);
    EXPECT_LE(sent, of);
    last = sent, total = of;
    return ++times <= patience;
  }
};

TEST_F(Mail, NothingArrivesOfAMessageThatWasStoppedOrBroke) {
  const MailServer server("good", certificate());
  MailTransport transport;
  use(transport, server);
  folder.write("large", std::string(20 << 20, 'x'));
  MailMessage message;
  fill(message);
  std::wstring type;
  ASSERT_TRUE(message.addFile(folder.wide("large"), type));
  Watcher watcher;
  watcher.patience = 2;
  transport.setProgress(&watcher);
  EXPECT_FALSE(transport.send(message));
  EXPECT_EQ(watcher.times, 3);
  EXPECT_LT(watcher.last, watcher.total);
  EXPECT_GT(watcher.total, 20 << 20);

  struct Cutter : MailProgress {
    std::filesystem::path file;
    bool sending(int64_t, int64_t) override { return truncate(file.c_str(), 1000) == 0; }
  } cutter;
  cutter.file = folder / "large";
  transport.setProgress(&cutter);
  EXPECT_FALSE(transport.send(message));
  EXPECT_THAT(reportOf(transport), HasSubstr("has changed while it was sent"));
  EXPECT_FALSE(server.hasMessage(1));

  transport.setProgress(nullptr);
  MailMessage next;
  fill(next);
  EXPECT_TRUE(transport.send(next)) << reportOf(transport);
  EXPECT_EQ(server.received("1/defects"), "");
}

TEST_F(Mail, ClosesAlsoWhereTheServerSaysNoGoodbye) {
  const MailServer server("mute-at-quit", certificate());
  MailTransport transport({5s, 2s});
  use(transport, server);
  ASSERT_TRUE(transport.verifyConnection()) << reportOf(transport);
  const auto start = std::chrono::steady_clock::now();
  transport.close();
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

TEST_F(Mail, NeedsAddresses) {
  MailTransport transport;
  transport.setServer(L"localhost");
  MailMessage message;
  message.setSenderAddress(L"a@b.c");
  EXPECT_FALSE(transport.send(message));
  EXPECT_THAT(reportOf(transport), HasSubstr("<step>recipient</step>"));
  message.addRecipient(L"", L"x@y.z>\r\nDATA");
  EXPECT_FALSE(transport.send(message));
  transport.setServer(L"no host\r\nat all");
  EXPECT_FALSE(transport.verifyConnection());
  EXPECT_THAT(reportOf(transport), HasSubstr("<words>"));
}

}  // namespace
