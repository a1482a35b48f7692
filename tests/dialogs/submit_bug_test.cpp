// The support report, against a real mail server of this machine.
#include "zarbo/dialogs/submit_bug.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "brx/lisp_calls.h"
#include "host/documents/document_lisp.h"
#include "host/documents/documents.h"
#include "platform/archive/archive_writer.h"
#include "platform/desktop/form.h"
#include "platform/desktop/scripted.h"
#include "platform/files/files.h"
#include "platform/settings/settings.h"
#include "platform/text/utf.h"
#include "tests/support/mail_server.h"
#include "zarbo/frame/framework_exception.h"
#include "zarbo/support/scrambled.h"

namespace {

using namespace platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// An application that tells who the user is, and keeps what else is asked of it.
class Application : public host::DocumentLisp {
 public:
  static inline std::vector<std::wstring> started;
  static inline bool knowsUser = true;
  void define(const std::wstring&, host::Application&, int) override {}
  void undefine(const std::wstring&, host::Application&, int) override {}
  void forget(host::Application&) override {}
  bool takeInterrupt() override { return false; }
  bool invoke(const resbuf& call, resbuf*& result) override {
    const std::wstring name = call.resval.rstring;
    if (name == L"startapp") started.push_back(call.rbnext->resval.rstring);
    if (name != L"util-supportIdentification" || !knowsUser) return name == L"startapp";
    result = acutBuildList(RTLB, RTSTR, L"Licence 7", RTSTR, L"", RTSTR, L"not asked for", RTLE, RTNONE);
    return true;
  }
};

/// Keeps what a person sees of the sending.
class WatchedDesktop : public ScriptedDesktop {
 public:
  WatchedDesktop() : ScriptedDesktop(nullptr) {}
  std::vector<int> meter;
  std::wstring status;
  int runDialog(Form& form) override {
    form_ = &form;
    return ScriptedDesktop::runDialog(form);
  }
  bool takeStop() override {
    if (form_->text(1061).starts_with(L"Sending... ")) status = form_->text(1061);
    return ScriptedDesktop::takeStop();
  }
  void mainWindowChanged() override {
    if (mainWindow().meterShown) meter.push_back(mainWindow().progress);
  }

 private:
  Form* form_ = nullptr;
};

/// Keeps the lines.
class KeptSteps : public StepLog {
 public:
  KeptSteps() : StepLog(L"kv_submit.log") {}
  std::wstring lines;
  std::wstring breakAt;
  bool breaksByFramework = true;
  void write(const wchar_t* line) override {
    if (line == breakAt && !breaksByFramework) throw std::runtime_error("no words for people");
    if (line == breakAt) throw new CException(L"It broke. " + std::wstring(300, L'x'));
    lines += line;
  }
};

const std::wstring wholeWay =
    L"Set email registry...\nDone\nSetup SMTP...\nDone\nVerify connection...\nDone\nCreate email "
    L"text...\nDone\n"
    L"Add attachments...\nDone\nCompress attachments...\nDone\nSending...\nCleanup...\n";

ScriptAction action(std::wstring verb, ScriptList arguments = {}) {
  return {std::move(verb), std::move(arguments)};
}
ScriptAction set(int control, const std::wstring& text) { return action(L"set", {control, text}); }
ScriptAction press(int button) { return action(L"click", {button}); }

class SubmitBug : public testing::Test {
 protected:
  void SetUp() override {
    certificate();  // outside of the folder of this test
    former_ = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* each : {"home/Desktop", "tmp", "settings"})
      std::filesystem::create_directories(folder / each);
    setenv("HOME", (folder / "home").c_str(), 1);
    setenv("TMPDIR", (folder / "tmp").c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    setSettingsFolder(folder / "settings");
    for (const wchar_t* each : {L"Shared", L"Installation"}) makeSection(root + each);
    auto made = std::make_unique<WatchedDesktop>();
    desktop = made.get();
    setDesktop(std::move(made));
    host::setDocumentLispMaker([] { return std::make_unique<Application>(); });
    host::documents().create(L"A.dwg");
    Application::started.clear();
    Application::knowsUser = true;
    folder.write("plan.dwg", "the plan");
    request.mode = 1;
    request.zipSuffix = L"7";
    request.trailer = L"The end";
    request.attachments = {folder.wide("plan.dwg")};
  }
  void TearDown() override {
    host::documents().closeAll();
    host::documents().discardClosed();
    host::setDocumentLispMaker({});
    setDesktop(nullptr);
    setSettingsFolder({});
    std::filesystem::current_path(former_);
    unsetenv("TMPDIR");
  }

  void useServer(const MailServer& server) {
    ASSERT_NE(server.port(), 0);
    setting(L"Installation", L"MailServer", scrambled(L"localhost"));
    setting(L"Installation", L"MailPort", std::to_wstring(server.port()));
    setting(L"Installation", L"MailPassword", scrambled(L"s3cret!pass"));
    setting(L"Installation", L"MailTrustFile", fromUtf8(certificate().file()));
  }
  static const TestCertificate& certificate() {
    static const TestCertificate instance;
    return instance;
  }
  void setting(const std::wstring& section, const std::wstring& name, const std::wstring& value) {
    ASSERT_EQ(writeSetting(root + section, name, value), SettingStatus::done);
  }
  std::wstring shared(const std::wstring& name) { return readSetting(root + L"Shared", name).value_or(L"?"); }

  /// The user fills the form, and does the rest.
  int run(FormScript rest) {
    FormScript script = {set(1030, L" Ann/Bee "), set(1029, L" ann@office.example "),
                         set(1032, L"ann@office.example"), set(1028, L" 555 "),
                         set(1031, L"It hurts. Much\nAlways")};
    script.insert(script.end(), rest.begin(), rest.end());
    desktop->queueDialog(std::move(script));
    return CSubmitBug(request, steps).doModal();
  }
  std::vector<std::wstring> boxTexts() {
    std::vector<std::wstring> texts;
    for (const auto& each : desktop->takeBoxes()) texts.push_back(each.box.text);
    return texts;
  }

  const std::wstring root = L"Software\\Korvane Software\\";
  TemporaryFolder folder;
  WatchedDesktop* desktop = nullptr;
  ReportRequest request;
  KeptSteps steps;

 private:
  std::filesystem::path former_;
};

TEST_F(SubmitBug, SendsTheReport) {
  const MailServer server("good", certificate());
  useServer(server);
  folder.write("second.kv", "");
  request.attachments.push_back(folder.wide("second.kv"));
  desktop->queueAnswer(BoxAnswer::ok);
  EXPECT_EQ(run({press(1)}), 1);
  EXPECT_EQ(steps.lines, wholeWay);
  const auto boxes = desktop->takeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].box.caption, L"Korvane");
  EXPECT_EQ(boxes[0].box.text, L"Message sent successfully.");
  EXPECT_EQ(boxes[0].box.style, 0u);
  EXPECT_EQ(shared(L"Name"), L"Ann/Bee");
  EXPECT_EQ(shared(L"Email"), L"ann@office.example");
  EXPECT_EQ(shared(L"Phone"), L"555");
  EXPECT_EQ(shared(L"bSendToDesktop2"), L"0");
  EXPECT_EQ(server.received("connections"), "1");
  EXPECT_EQ(server.received("1/Subject"), "KV Bug: It hurts");
  EXPECT_EQ(server.received("1/From"), "Ann/Bee <ann@office.example>");
  EXPECT_EQ(server.received("1/To"), "support@korvane.example");
  EXPECT_EQ(server.received("1/text"), "Licence 7\n555\n\nIt hurts. Much\nAlways\n\nThe end\n");
  ArchiveWriter reader;
  ASSERT_TRUE(reader.open(server.folder().wide("1/files/AnnBee 7.zip")));
  ASSERT_TRUE(reader.extractAll(folder.wide("out")));
  EXPECT_EQ(folder.read("out/plan.dwg"), "the plan");
  EXPECT_TRUE(std::filesystem::exists(folder / "out/second.kv"));
  EXPECT_FALSE(std::filesystem::exists(folder / "kv_submiterror.xml"));
  for (const auto& each : std::filesystem::directory_iterator(folder / "tmp"))
    EXPECT_FALSE(each.path().filename().native().starts_with(".zarbo")) << "the archive is gone";
}

TEST_F(SubmitBug, ShowsHowFarItIs) {
  const MailServer server("good", certificate());
  useServer(server);
  std::string noise;
  for (uint32_t state = 1; noise.size() < 8u << 20;)
    noise += static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
  folder.write("plan.dwg", noise);
  desktop->queueAnswer(BoxAnswer::ok);
  EXPECT_EQ(run({press(1)}), 1);
  // How often the meter was shown depends on the machine; its own test holds the rest.
  EXPECT_TRUE(std::is_sorted(desktop->meter.begin(), desktop->meter.end()));
  EXPECT_TRUE(desktop->status.ends_with(L"%")) << desktop->status;
  EXPECT_FALSE(desktop->mainWindow().meterShown);
}

TEST_F(SubmitBug, KeepsEverythingOpenAfterAFailure) {
  const MailServer refusing("refuse-recipient", certificate()), server("good", certificate());
  useServer(refusing);
  Application::knowsUser = false;
  for (const BoxAnswer each : {BoxAnswer::no, BoxAnswer::no}) desktop->queueAnswer(each);
  // The second OK meets the same message again.
  EXPECT_EQ(run({press(1), action(L"get", {1031}), action(L"get", {1061}), press(1)}), 2)
      << "cancelled at the end";
  EXPECT_EQ(steps.lines, wholeWay + wholeWay);
  const std::wstring question =
      L"An error occurred while sending the email and was unable to finish.\nWould you like to save the "
      L"report to "
      L"the Desktop and manually send it to \"support@korvane.example\"?";
  EXPECT_THAT(boxTexts(), ElementsAre(question, question));
  EXPECT_THAT(folder.read("kv_submiterror.xml"), HasSubstr("550 5.1.1"));
  EXPECT_THAT(folder.read("kv_submiterror.xml"), Not(HasSubstr("s3cret")));

  // With a server that takes it, nothing stands in the message twice.
  useServer(server);
  steps.lines.clear();
  desktop->queueAnswer(BoxAnswer::ok);
  EXPECT_EQ(run({press(1)}), 1);
  EXPECT_EQ(server.received("1/envelope"), "ann@office.example\nsupport@korvane.example\n");
  EXPECT_EQ(server.received("1/text"), "555\n\nIt hurts. Much\nAlways\n\nThe end\n");
}

TEST_F(SubmitBug, SaysWhatIsWrongWithAnAddress) {
  for (int i = 0; i < 3; ++i) desktop->queueAnswer(BoxAnswer::ok);
  setting(L"Shared", L"Email", L"former");
  run({set(1032, L"Ann@office.example"), press(1), set(1029, L"me@Korvane.Example"), press(1),
       set(1029, L" "), press(1)});
  const auto boxes = desktop->takeBoxes();
  ASSERT_EQ(boxes.size(), 3u);
  EXPECT_EQ(boxes[0].box.text, L"The e-mail addresses do not match.");
  EXPECT_EQ(boxes[0].box.style, 48u);
  EXPECT_EQ(boxes[1].box.text, L"Enter your email address. We will use this email address to reply to you.");
  EXPECT_EQ(boxes[2].box.text, L"An e-mail address is needed.");
  EXPECT_EQ(steps.lines, L"");
  EXPECT_EQ(shared(L"Name"), L"Ann/Bee") << "written before the address is looked at";
  EXPECT_EQ(shared(L"Email"), L"former");
}

/// What fails on the way, the steps up to there, and what the user is told.
struct Breakdown {
  const char* mode;
  const char* file;  ///< listed as attachment, or none
  const wchar_t* lastSteps;
  const wchar_t* told;
};
class SubmitBugBreaks : public SubmitBug, public testing::WithParamInterface<Breakdown> {};

TEST_P(SubmitBugBreaks, IsTold) {
  const MailServer server(GetParam().mode, certificate());
  useServer(server);
  request.attachments.clear();
  if (GetParam().file) request.attachments = {folder.wide(GetParam().file)};
  desktop->queueAnswer(request.attachments.empty() ? BoxAnswer::ok : BoxAnswer::no);
  EXPECT_EQ(run({press(1)}), 2);
  EXPECT_TRUE(steps.lines.ends_with(GetParam().lastSteps)) << steps.lines;
  EXPECT_THAT(boxTexts(), ElementsAre(testing::StartsWith(GetParam().told)));
  EXPECT_THAT(folder.read("kv_submiterror.xml"), HasSubstr("<error>"));
  EXPECT_EQ(shared(L"bSendToDesktop2"), L"0");
}

INSTANTIATE_TEST_SUITE_P(
    Modes, SubmitBugBreaks,
    testing::Values(Breakdown{"refuse-login", "plan.dwg", L"Verify connection...\nCleanup...\n",
                              L"Could not connect to the SMTP server.\nWould"},
                    Breakdown{
                        "drop", nullptr, L"Verify connection...\nCleanup...\n",
                        L"Could not connect to the SMTP server.You will need to send an email manually to "
                        L"\"support@korvane.example\"."},
                    Breakdown{"good", "vanished", L"Done\nAdd attachments...\nCleanup...\n",
                              L"There was an error creating the mail attachments.\nWould"},
                    Breakdown{"drop-in-data", "plan.dwg", L"Sending...\nCleanup...\n",
                              L"An error occurred while sending the email"}),
    [](const auto& each) {
      std::string name = each.param.mode;
      std::erase(name, '-');
      return name;
    });

TEST_F(SubmitBug, ALackOfRoomBreaksTheCompression) {
  const MailServer server("good", certificate());
  useServer(server);
  setenv("TMPDIR", (folder / "nowhere").c_str(), 1);
  desktop->queueAnswer(BoxAnswer::no);
  run({press(1)});
  EXPECT_TRUE(steps.lines.ends_with(L"Compress attachments...\nCleanup...\n"));
  EXPECT_THAT(boxTexts(), ElementsAre(testing::StartsWith(
                              L"There was an error compressing one or more of the file attachments.\n")));
}

TEST_F(SubmitBug, ExceptionsEndTheSendingAlone) {
  const MailServer server("good", certificate());
  useServer(server);
  steps.breakAt = L"Sending...\n";
  for (int i = 0; i < 2; ++i) desktop->queueAnswer(BoxAnswer::ok);
  EXPECT_EQ(run({press(1)}), 2);
  const auto boxes = desktop->takeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_TRUE(boxes[0].box.text.starts_with(L"Message could not be sent.\nIt broke. xxx"));
  EXPECT_EQ(boxes[0].box.text.size(), std::size(L"Message could not be sent.\n") - 1 + 255);
  EXPECT_TRUE(std::filesystem::exists(folder / "kv_submiterror.xml"));

  steps.breaksByFramework = false;
  EXPECT_EQ(run({press(1)}), 2);
  EXPECT_THAT(boxTexts(), ElementsAre(L"Message could not be sent due to an unexpected error."));
}

TEST_F(SubmitBug, AStopIsAskedForAndObeyed) {
  const MailServer server("good", certificate());
  useServer(server);
  desktop->queueStop();
  for (const BoxAnswer each : {BoxAnswer::yes, BoxAnswer::no}) desktop->queueAnswer(each);
  run({press(1)});
  EXPECT_THAT(boxTexts(), ElementsAre(L"Do you want to stop sending the report?",
                                      testing::StartsWith(L"Could not connect to the SMTP server.")));
  EXPECT_FALSE(server.hasMessage(1));
}

TEST_F(SubmitBug, SavesToTheDesktopInsteadOfSending) {
  request.attachments.push_back(folder.path().wstring() + L"/home");
  for (int i = 0; i < 4; ++i) desktop->queueAnswer(BoxAnswer::ok);
  EXPECT_EQ(run({action(L"check", {1023, true}), set(1029, L"no address"), press(1)}), 1);
  EXPECT_EQ(steps.lines, L"");
  EXPECT_EQ(shared(L"bSendToDesktop2"), L"1");
  EXPECT_EQ(shared(L"Email"), L"?");
  const std::string name = "Send to support@korvane.example--AnnBee 7.zip";
  const std::wstring archive = folder.wide("home/Desktop/" + name);
  const auto boxes = desktop->takeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].box.caption, L"EMAIL NOT SENT!");
  EXPECT_EQ(boxes[0].box.style, 48u);
  EXPECT_EQ(boxes[0].box.text,
            L"EMAIL NOT SENT!\n\nFile \"" + fromUtf8(name) +
                L"\" was saved to the desktop but has not been sent.\n\nManually send the file to "
                L"\"support@korvane.example\".");
  EXPECT_THAT(Application::started, ElementsAre(L"explorer.exe /select," + archive));
  ArchiveWriter reader;
  ASSERT_TRUE(reader.open(archive) && reader.extractAll(folder.wide("out")));
  const std::string kept = "out" + folder.path().native();
  EXPECT_EQ(folder.read(kept + "/plan.dwg"), "the plan");
  EXPECT_EQ(folder.read(kept + "/tmp/KV_temp/kv_error.txt"),
            "Licence 7\n555\n\nIt hurts. Much\r\nAlways\n\nThe end\n");
  EXPECT_TRUE(std::filesystem::is_directory(folder / (kept + "/home/Desktop")));

  // The next dialog starts with the check set, and a save with nothing listed holds the text file.
  request.attachments.clear();
  EXPECT_EQ(run({press(1)}), 1);
  std::filesystem::remove_all(folder / "out");
  ASSERT_TRUE(reader.open(archive) && reader.extractAll(folder.wide("out")));
  EXPECT_TRUE(std::filesystem::exists(folder / (kept + "/tmp/KV_temp/kv_error.txt")));
}

TEST_F(SubmitBug, ASecondSaveListsItsTextOnce) {
  const MailServer server("refuse-login", certificate());
  useServer(server);
  for (const BoxAnswer each : {BoxAnswer::yes, BoxAnswer::ok, BoxAnswer::yes, BoxAnswer::ok})
    desktop->queueAnswer(each);
  run({press(1), action(L"get", {1066}), press(1)});
  EXPECT_EQ(shared(L"bSendToDesktop2"), L"1");
  EXPECT_THAT(boxTexts(), ElementsAre(testing::_, testing::StartsWith(L"EMAIL NOT SENT!"), testing::_,
                                      testing::StartsWith(L"EMAIL NOT SENT!")));
  EXPECT_EQ(Application::started.size(), 2u);
}

TEST_F(SubmitBug, ADesktopThatFailsIsTold) {
  const FormScript toDesktop = {action(L"check", {1023, true}), press(1)};
  request.attachments.push_back(folder.wide("vanished"));
  for (int i = 0; i < 3; ++i) desktop->queueAnswer(BoxAnswer::ok);
  run(toDesktop);
  std::filesystem::create_directory(folder / "home/Desktop/Send to support@korvane.example--AnnBee 7.zip");
  run(toDesktop);
  std::filesystem::remove_all(folder / "home/Desktop");
  run(toDesktop);
  EXPECT_THAT(boxTexts(),
              ElementsAre(L"An error occurred while compressing attachments.",
                          L"Failed to create new zip folder.", L"Unable to locate desktop path."));
  EXPECT_EQ(Application::started.size(), 3u) << "also after a failure";
  EXPECT_THAT(folder.read("kv_ziperror.xml"), HasSubstr("<error>"));
}

TEST_F(SubmitBug, TheAttachmentDialogEditsTheListByOkOnly) {
  request.mode = 0;
  request.attachments.push_back(folder.wide("other.kv"));
  desktop->queueFile(folder.wide("PLAN.dwg"));
  desktop->queueFile(folder.wide("third.ies"));
  FormScript script = {action(L"get", {1066}), press(1010), action(L"get", {1066}), press(1010),
                       action(L"get", {1066})};
  desktop->queueDialog(script);
  desktop->queueDialog({action(L"title"), action(L"select", {1064, 0}), press(4), press(4), press(2)});
  desktop->queueDialog(
      {press(1063), press(1063), action(L"select", {1064, 1}), press(4), press(1063), press(1)});
  CSubmitBug(request, steps).doModal();
  const ScriptList log = desktop->takeDialogLog();
  EXPECT_EQ(log, (ScriptList{L"(2 files)", L"Korvane Attachments", L"(2 files)", L"(2 files)"}));
}

TEST_F(SubmitBug, StartsByModeAndSettings) {
  setting(L"Shared", L"Name", L"Ann");
  setting(L"Shared", L"Email", L"ann@office.example");
  setting(L"Shared", L"bSendToDesktop2", L"1");
  request.attachments.clear();
  const FormScript look = {action(L"title"),
                           action(L"enabled", {1010}),
                           action(L"enabled", {1061}),
                           action(L"get", {1066}),
                           action(L"get", {1032}),
                           action(L"focus"),
                           action(L"check", {1023, false}),
                           action(L"enabled", {1061})};
  struct Start {
    int mode;
    const wchar_t* title;
    bool attachments;
  };
  const Start starts[] = {{0, L"Send Project to Korvane Support", true},
                          {1, L"Send Bug to Korvane Support", false},
                          {4, L"Send Master and Standards Databases to Korvane Support", false},
                          {5, L"Send Standards Databases to Korvane Support", false},
                          {-7, L"Send to Korvane Support", false}};
  for (const Start& each : starts) {
    request.mode = each.mode;
    desktop->queueDialog(look);
    CSubmitBug(request, steps).doModal();
    EXPECT_EQ(desktop->takeDialogLog(),
              (ScriptList{each.title, each.attachments, false, L"", L"ann@office.example", 1031, true}));
  }
}

}  // namespace
