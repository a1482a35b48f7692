#pragma once

#include <string>
#include <vector>

#include "platform/desktop/form.h"
#include "platform/mail/mail_transport.h"
#include "zarbo/support/progress_meter.h"
#include "zarbo/support/step_log.h"
#include "zarbo/support/support_settings.h"

/// What the application asks to be reported.
struct ReportRequest {
  int mode = 0;
  std::wstring zipSuffix;  ///< of the archive's name
  std::wstring trailer;    ///< last paragraph of the mail's text
  std::vector<std::wstring> attachments;
};

/// The dialog by which a user sends a report to support: by mail, or as an archive on the desktop. It stays
/// open, with all that was typed, until a report has gone or was saved in place of mailing.
class CSubmitBug : private platform::MailProgress {
 public:
  /// The log must live as long as the dialog.
  CSubmitBug(ReportRequest request, StepLog& log);
  int doModal();

 private:
  // Building
  void addControls();
  void layOut();
  void fill();
  void showCount();
  void showAddressLine();

  // What the user does
  void editAttachments();
  void accept();
  bool send();
  void saveToDesktop();

  // Steps of sending: each gives "", or the failure in words.
  void setUpServer();
  std::wstring deliver();
  std::wstring addAttachments();
  void step(const wchar_t* line) { log_.write(line); }
  void showStatus(const std::wstring& text);
  void mailReport() { transport_.saveLastError(L"kv_submiterror.xml"); }
  bool conclude(const std::wstring& failure);

  std::wstring trimmedOf(int control) const;
  std::wstring additionalText() const;
  std::wstring mailText() const;
  std::wstring archiveName() const;
  bool sending(int64_t sent, int64_t total) override;

  ReportRequest request_;
  StepLog& log_;
  SupportSettings settings_;
  platform::Form form_;
  platform::MailTransport transport_;
  platform::MailMessage message_;
  ProgressMeter* meter_ = nullptr;  ///< while a report is sent
};
