#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/mail/mail_message.h"

namespace platform {

/// Who is told of the progress, at most 20 times a second, also while the server is waited for.
class MailProgress {
 public:
  virtual ~MailProgress() = default;
  /// Bytes of the message that have gone, and that there are in all; 0 while there is no message. False stops
  /// the work as failed.
  virtual bool sending(int64_t /*sent*/, int64_t /*total*/) { return true; }
};

/// How long a server may keep one waiting.
struct MailLimits {
  std::chrono::seconds connect{20};
  /// For an answer, and for any bytes to be taken.
  std::chrono::seconds answer{60};
};

/// Delivers mails by SMTP to one server that the sender logs in to. The connection is made secure by STARTTLS
/// before anything else is said, whatever the server would prefer, and the server's certificate is checked.
/// One connection serves until it is closed. Operations with a flag answer false on failure; the report of
/// the last one can be saved and never holds the password.
class MailTransport {
 public:
  explicit MailTransport(const MailLimits& limits = {});
  ~MailTransport();
  MailTransport(const MailTransport&) = delete;
  MailTransport& operator=(const MailTransport&) = delete;

  void setServer(const std::wstring& host);
  void setAccount(const std::wstring& account);
  void setPassword(const std::wstring& password);
  void setPort(int port);
  /// A file of certificates (PEM) that are trusted in place of the system's; "" for the system's.
  void setTrustFile(const std::wstring& path);
  /// Null for nobody. Must live as long as it is set.
  void setProgress(MailProgress* progress);

  /// Connects and logs in.
  bool verifyConnection();
  /// Connects and logs in where that isn't done yet. The server has the whole message, or nothing of it
  /// counts.
  bool send(const MailMessage& message);
  void close();
  /// XML: the step, the server, the code and words of the failure, the server's last line, the conversation.
  bool saveLastError(const std::wstring& file) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace platform
