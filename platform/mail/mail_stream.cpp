#include "platform/mail/mail_stream.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <random>

#include "platform/files/whole_file.h"
#include "platform/mail/encodings.h"
#include "platform/mail/headers.h"
#include "platform/mail/mail_message.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

constexpr size_t bytesOfPiece = bytesOfBase64Line * 1024;

/// A word that no other message has.
std::string uniqueWord() {
  std::random_device source;
  std::string word;
  for (int i = 0; i < 24; ++i) word += "0123456789abcdefghijklmnopqrstuv"[source() % 32];
  return word;
}

std::string addressOf(const MailMessage::Mailbox& mailbox) {
  return mailAddress(mailbox.address).value_or("");
}

std::string recipientsOf(const MailMessage& message) {
  std::string all;
  for (const MailMessage::Mailbox& each : message.recipients())
    all += (all.empty() ? "" : ",\r\n ") + headerMailbox(each.name, addressOf(each));
  return all;
}

std::string headerOf(const MailMessage& message) {
  const std::string sender = addressOf(message.sender());
  return "Date: " + headerDate(std::time(nullptr)) +                             //
         "\r\nMessage-ID: <" + uniqueWord() + sender.substr(sender.find('@')) +  //
         ">\r\nFrom: " + headerMailbox(message.sender().name, sender) +          //
         "\r\nTo: " + recipientsOf(message) +                                    //
         "\r\nSubject: " + headerText(message.subject()) +                       //
         "\r\nMIME-Version: 1.0\r\n";
}

std::string textPart(const MailMessage& message) {
  return "Content-Type: text/plain; charset=UTF-8\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n" +
         quotedPrintable(withMailLineEnds(toUtf8(message.text())));
}

std::string fileHeader(const MailMessage::Attachment& file) {
  return "Content-Type: " + file.contentType +
         "\r\nContent-Transfer-Encoding: base64\r\nContent-Disposition: attachment" +
         headerFileName(file.name) + "\r\n\r\n";
}

}  // namespace

MailStream::MailStream(const MailMessage& message) {
  const std::string header = headerOf(message);
  if (message.attachments().empty()) {
    addText(header + textPart(message) + "\r\n");
    return;
  }
  const std::string boundary = uniqueWord(), border = "\r\n--" + boundary;
  addText(header + "Content-Type: multipart/mixed; boundary=" + boundary + "\r\n" + border + "\r\n" +
          textPart(message));
  for (const MailMessage::Attachment& each : message.attachments()) {
    addText(border + "\r\n" + fileHeader(each));
    addFile(each.file);
  }
  addText(border + "--\r\n");
}

MailStream::~MailStream() {
  if (descriptor_ >= 0) close(descriptor_);
}

void MailStream::addText(std::string text) {
  if (size_ >= 0) size_ += static_cast<int64_t>(text.size());
  segments_.push_back({std::move(text), {}, 0});
}

void MailStream::addFile(const std::string& file) {
  struct stat info;
  if (stat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) {
    failed(file, "can't be read");
    size_ = -1;
    return;
  }
  if (size_ >= 0) size_ += static_cast<int64_t>(sizeOfBase64Lines(static_cast<size_t>(info.st_size)));
  segments_.push_back({{}, file, info.st_size});
}

bool MailStream::failed(const std::string& file, const std::string& reason) {
  if (problem_.empty()) problem_ = file + ": " + reason;
  return false;
}

std::optional<size_t> MailStream::read(char* buffer, size_t room) {
  size_t given = 0;
  while (given < room) {
    if (taken_ == ready_.size()) {
      ready_.clear();
      taken_ = 0;
      if (current_ == segments_.size()) break;
      if (!refill()) return std::nullopt;
    }
    const size_t count = std::min(room - given, ready_.size() - taken_);
    std::memcpy(buffer + given, ready_.data() + taken_, count);
    given += count;
    taken_ += count;
  }
  return given;
}

bool MailStream::refill() {
  Segment& segment = segments_[current_];
  if (!segment.file.empty()) return refillFromFile();
  ready_ = std::move(segment.text);
  ++current_;
  return true;
}

bool MailStream::refillFromFile() {
  const Segment& segment = segments_[current_];
  if (descriptor_ < 0) {
    descriptor_ = openPlainFile(segment.file);
    if (descriptor_ < 0) return failed(segment.file, "can't be read");
    leftOfFile_ = segment.length;
  }
  std::string bytes(bytesOfPiece, '\0');
  size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t count = ::read(descriptor_, bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return failed(segment.file, std::strerror(errno));
    if (count == 0) break;
    length += static_cast<size_t>(count);
  }
  const bool isEnd = length < bytes.size();
  leftOfFile_ -= static_cast<int64_t>(length);
  if (leftOfFile_ < 0 || (isEnd && leftOfFile_ != 0))
    return failed(segment.file, "has changed while it was sent");
  ready_ = base64Lines(std::string_view(bytes).substr(0, length));
  if (isEnd) {
    close(descriptor_);
    descriptor_ = -1;
    ++current_;
  }
  return true;
}

}  // namespace platform
