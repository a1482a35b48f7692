#pragma once

#include <memory>
#include <string>
#include <vector>

namespace platform {

class PrivateFolder;

/// A mail with a text, and files that are read only when it is sent. Operations with a flag answer false on
/// failure; the reason of the last one can be saved.
class MailMessage {
 public:
  struct Mailbox {
    std::wstring name;  ///< for display; may be empty
    std::wstring address;
  };
  struct Attachment {
    std::string file;  ///< the native path
    std::wstring name;
    std::string contentType;
  };

  MailMessage();
  ~MailMessage();
  MailMessage(const MailMessage&) = delete;
  MailMessage& operator=(const MailMessage&) = delete;

  void setSubject(const std::wstring& subject) { subject_ = subject; }
  void setText(const std::wstring& text) { text_ = text; }
  void setSenderName(const std::wstring& name) { sender_.name = name; }
  void setSenderAddress(const std::wstring& address) { sender_.address = address; }
  void addRecipient(const std::wstring& name, const std::wstring& address);
  /// A plain file that can be read, empty ones included; gives the type by the name's ending.
  bool addFile(const std::wstring& path, std::wstring& contentType);
  /// All attachments become one zip archive of this name. Names that come twice get a number.
  bool compressAttachments(const std::wstring& archiveName);
  /// Empties the message, so that it can be filled anew.
  void clear();
  bool saveLastError(const std::wstring& file) const;

  const std::wstring& subject() const { return subject_; }
  const std::wstring& text() const { return text_; }
  const Mailbox& sender() const { return sender_; }
  const std::vector<Mailbox>& recipients() const { return recipients_; }
  const std::vector<Attachment>& attachments() const { return attachments_; }

 private:
  bool failed(const char* step, const std::string& file, const std::string& reason);

  std::wstring subject_, text_;
  Mailbox sender_;
  std::vector<Mailbox> recipients_;
  std::vector<Attachment> attachments_;
  std::unique_ptr<PrivateFolder> archiveFolder_;
  std::string lastError_;
};

}  // namespace platform
