#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class MailMessage;

/// The bytes of a message as they go to the server: header, text and files, made piece by piece, so that no
/// file is held in memory.
class MailStream {
 public:
  /// The message's sender and recipients must be addresses.
  explicit MailStream(const MailMessage& message);
  ~MailStream();
  MailStream(const MailStream&) = delete;
  MailStream& operator=(const MailStream&) = delete;

  /// In bytes, known from the start; -1 when a file isn't there any more.
  int64_t size() const { return size_; }
  /// How many bytes were put into the buffer, 0 at the end. Nothing when a file can't be read or has changed
  /// its length since the start.
  std::optional<size_t> read(char* buffer, size_t room);
  /// The reason of a failure.
  const std::string& problem() const { return problem_; }

 private:
  struct Segment {
    std::string text;  ///< or, where it is empty, a file
    std::string file;
    int64_t length = 0;  ///< of the file
  };
  void addText(std::string text);
  void addFile(const std::string& file);
  bool refill();
  bool refillFromFile();
  bool failed(const std::string& file, const std::string& reason);

  std::vector<Segment> segments_;
  size_t current_ = 0;
  int descriptor_ = -1;
  int64_t leftOfFile_ = 0;
  std::string ready_;  ///< made and not yet taken
  size_t taken_ = 0;
  int64_t size_ = 0;
  std::string problem_;
};

}  // namespace platform
