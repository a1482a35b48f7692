#include "zarbo/dialogs/submit_bug.h"

#include "brx/editor_input.h"
#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "platform/text/trim.h"
#include "zarbo/dialogs/attachment_dialog.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/frame/framework_exception.h"
#include "zarbo/support/desktop_report.h"
#include "zarbo/support/report_text.h"
#include "zarbo/support/scrambled.h"
#include "zarbo/support/user_settings.h"
#include "zarbo/widgets/dialog.h"

namespace {

using namespace platform;

enum Number {
  toDesktop = 1023,
  phone = 1028,
  email = 1029,
  name = 1030,
  additional = 1031,
  emailAgain = 1032,
  attachmentsButton = 1010,
  addressLine = 1061,
  fileCount = 1066,
};

const std::wstring shared = L"Shared";
/// The application's function that tells who the user is, in two texts.
constexpr const wchar_t* identification = L"util-supportIdentification";
constexpr size_t longestExceptionText = 255;

BoxAnswer show(const std::wstring& text, unsigned style) {
  return desktop().messageBox({L"Korvane", text, style});
}

constexpr unsigned exclamation = unsigned{okBox} | unsigned{exclamationIcon};

/// The texts that the application's callback returns; none when it fails.
std::wstring identificationLines() {
  ApplicationCall call(identification);
  call.invoke();
  std::wstring lines;
  int count = 0;
  for (const resbuf* each = call.answer(); each && count < 2; each = each->rbnext) {
    if (each->restype != RTSTR) continue;
    ++count;
    if (each->resval.rstring && *each->resval.rstring) lines += std::wstring(each->resval.rstring) + L"\n";
  }
  return lines;
}

}  // namespace

CSubmitBug::CSubmitBug(ReportRequest request, StepLog& log)
    : request_(std::move(request)),
      log_(log),
      settings_(supportSettings()),
      form_(titleOfReport(request_.mode), L"kv_zarbo:SubmitBug") {
  addControls();
  layOut();
  form_.onStart = [this] { fill(); };
}

int CSubmitBug::doModal() { return runModuleDialog(form_); }

void CSubmitBug::addControls() {
  for (const int edit : {name, email, emailAgain, phone}) form_.addEdit(edit).size(40);
  form_.addMultiLineEdit(additional).size(60, 8);
  form_.addCheckBox(toDesktop, L"Save to desktop (check if sending fails or crashes)");
  form_.control(toDesktop).setTip(
      L"Save as a ZIP file to your desktop.  Use this option if sending normally fails.");
  form_.control(toDesktop).onChange = [this] {
    form_.control(addressLine).setEnabled(!form_.control(toDesktop).isChecked());
  };
  form_.addButton(attachmentsButton, L"Attachments. . .", [this] { editAttachments(); });
  form_.control(attachmentsButton).setEnabled(static_cast<ReportMode>(request_.mode) == ReportMode::project);
  form_.addLabel(fileCount, L"");
  form_.addLabel(addressLine, L"");
  form_.addButton(okButton, L"&OK", [this] { accept(); });
  form_.addButton(cancelButton, L"Cancel");
}

void CSubmitBug::layOut() {
  form_.setLayout(column({
      fields({field(L"Name:", name), field(L"Email Address (required):", email),
              field(L"Re-enter Email Address:", emailAgain), field(L"Phone Number:", phone),
              field(L"Additional Information:", additional)}),
      toDesktop,
      row({attachmentsButton, fileCount, space()}),
      addressLine,
      okAndCancel(),
  }));
}

void CSubmitBug::fill() {
  form_.control(name).setText(getRegistryValue(shared, L"Name"));
  const std::wstring address = getRegistryValue(shared, L"Email");
  form_.control(email).setText(address);
  form_.control(emailAgain).setText(address);
  form_.control(phone).setText(getRegistryValue(shared, L"Phone"));
  form_.control(toDesktop).setChecked(getRegistryValue(shared, L"bSendToDesktop2") == L"1");
  showAddressLine();
  form_.control(addressLine).setEnabled(!form_.control(toDesktop).isChecked());
  showCount();
  form_.setFocus(form_.text(name).empty() ? name : form_.text(email).empty() ? email : additional);
}

void CSubmitBug::showCount() {
  const size_t count = request_.attachments.size();
  std::wstring text;
  if (count > 0) text = L"(" + std::to_wstring(count) + (count == 1 ? L" file)" : L" files)");
  form_.control(fileCount).setText(text);
}

void CSubmitBug::showAddressLine() {
  form_.control(addressLine).setText(L"The report goes to " + settings_.address + L".");
}

void CSubmitBug::editAttachments() {
  if (CAttachmentDialog(request_.attachments).doModal() == okButton) showCount();
}

std::wstring CSubmitBug::trimmedOf(int control) const { return std::wstring(trimmed(form_.text(control))); }

// The subject's length counts on the line ends of the host's platform.
std::wstring CSubmitBug::additionalText() const {
  std::wstring text;
  for (const wchar_t c : form_.text(additional)) {
    if (c == L'\n' && !text.ends_with(L'\r')) text += L'\r';
    text += c;
  }
  return text;
}

std::wstring CSubmitBug::archiveName() const { return archiveNameOf(form_.text(name), request_.zipSuffix); }

std::wstring CSubmitBug::mailText() const {
  std::wstring text = identificationLines();
  if (const std::wstring number = trimmedOf(phone); !number.empty()) text += number + L"\n";
  return text + L"\n" + additionalText() + L"\n\n" + request_.trailer + L"\n";
}

void CSubmitBug::accept() {
  setRegistryValue(shared, L"Name", trimmedOf(name));
  setRegistryValue(shared, L"Phone", trimmedOf(phone));
  if (form_.control(toDesktop).isChecked()) {
    setRegistryValue(shared, L"bSendToDesktop2", L"1");
    saveToDesktop();
    form_.close();
    return;
  }
  setRegistryValue(shared, L"bSendToDesktop2", L"0");
  if (send()) form_.close();
}

void CSubmitBug::saveToDesktop() {
  saveReportToDesktop({archiveName(), mailText(), settings_.address}, request_.attachments);
}

bool CSubmitBug::send() {
  const AddressFault fault = addressFault(trimmedOf(email), trimmedOf(emailAgain), settings_.domain);
  if (fault != AddressFault::none) {
    show(messageOf(fault), exclamation);
    form_.setFocus(email);
    return false;
  }
  std::wstring failure;
  try {
    ProgressMeter meter(L"Sending the report");
    meter_ = &meter;
    failure = deliver();
    meter_ = nullptr;
    step(L"Cleanup...\n");
    transport_.close();
  } catch (CException* exception) {
    meter_ = nullptr;
    const std::wstring words = exception->message().substr(0, longestExceptionText);
    exception->Delete();
    show(L"Message could not be sent.\n" + words, okBox);
    mailReport();
    transport_.close();
    showAddressLine();
    return false;
  } catch (...) {
    meter_ = nullptr;
    show(L"Message could not be sent due to an unexpected error.", okBox);
    transport_.close();
    showAddressLine();
    return false;
  }
  return conclude(failure);
}

void CSubmitBug::setUpServer() {
  transport_.setServer(unscrambled(settings_.server));
  transport_.setAccount(unscrambled(settings_.account));
  transport_.setPassword(unscrambled(settings_.password));
  transport_.setPort(settings_.port);
  transport_.setTrustFile(settings_.trustFile);
  // Already here, so that the window lives while the server is waited for.
  transport_.setProgress(this);
}

std::wstring CSubmitBug::deliver() {
  step(L"Set email registry...\n");
  setRegistryValue(shared, L"Email", trimmedOf(email));
  step(L"Done\n");

  step(L"Setup SMTP...\n");
  setUpServer();
  step(L"Done\n");

  step(L"Verify connection...\n");
  if (!transport_.verifyConnection()) {
    mailReport();
    return L"Could not connect to the SMTP server.";
  }
  step(L"Done\n");
  showStatus(L"Connection Successful");

  step(L"Create email text...\n");
  message_.clear();  // of an earlier try
  message_.setSubject(subjectOfReport(request_.mode, additionalText()));
  message_.setText(mailText());
  if (const std::wstring sender = trimmedOf(name); !sender.empty()) message_.setSenderName(sender);
  message_.setSenderAddress(trimmedOf(email));
  message_.addRecipient(L"", settings_.address);
  step(L"Done\n");

  if (!request_.attachments.empty()) {
    if (const std::wstring failure = addAttachments(); !failure.empty()) return failure;
  }

  step(L"Sending...\n");
  if (transport_.send(message_)) return {};
  mailReport();
  return L"An error occurred while sending the email and was unable to finish.";
}

std::wstring CSubmitBug::addAttachments() {
  constexpr const wchar_t* report = L"kv_submiterror.xml";
  step(L"Add attachments...\n");
  showStatus(L"Adding attachments...");
  for (const std::wstring& path : request_.attachments) {
    std::wstring type;
    if (path.empty() || message_.addFile(path, type)) continue;
    message_.saveLastError(report);
    return L"There was an error creating the mail attachments.";
  }
  step(L"Done\n");

  step(L"Compress attachments...\n");
  showStatus(L"Zipping attachments...");
  if (!message_.compressAttachments(archiveName())) {
    message_.saveLastError(report);
    return L"There was an error compressing one or more of the file attachments.";
  }
  step(L"Done\n");
  return {};
}

bool CSubmitBug::conclude(const std::wstring& failure) {
  if (failure.empty()) {
    show(L"Message sent successfully.", okBox);
    return true;
  }
  if (request_.attachments.empty()) {
    // Without a gap between the sentences.
    show(failure + L"You will need to send an email manually to \"" + settings_.address + L"\".",
         exclamation);
  } else if (show(failure + L"\nWould you like to save the report to the Desktop and manually send it to \"" +
                      settings_.address + L"\"?",
                  unsigned{yesNoBox} | unsigned{exclamationIcon}) == BoxAnswer::yes) {
    setRegistryValue(shared, L"bSendToDesktop2", L"1");
    saveToDesktop();
  }
  showAddressLine();
  return false;
}

void CSubmitBug::showStatus(const std::wstring& text) {
  form_.control(addressLine).setText(text);
  form_.drawNow();
}

bool CSubmitBug::sending(int64_t sent, int64_t total) {
  if (total > 0) {
    showStatus(L"Sending... " + std::to_wstring(sent * 100 / total) + L"%");
    if (meter_) meter_->show(sent, total);
  }
  if (!desktop().takeStop() && !acedUsrBrk()) return true;
  return show(L"Do you want to stop sending the report?", unsigned{yesNoBox} | unsigned{questionIcon}) !=
         BoxAnswer::yes;
}
