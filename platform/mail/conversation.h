#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What was said between this program and a mail server, for the report of a failure. What the program says
/// to log in is masked, and so is each secret wherever a server repeats it. Of long conversations the end is
/// kept.
class Conversation {
 public:
  /// Texts that must show nowhere.
  void keepSecret(const std::string& text);
  /// Commands that went to the server, and lines that came from it, as they are on the wire.
  void addSent(std::string_view bytes);
  void addReceived(std::string_view bytes);
  void clear();

  /// What the program's last command was for, in a word or two. The goodbye after a failure doesn't count.
  const char* step() const;
  /// The server's last line before the goodbye, "" before the first.
  const std::string& lastAnswer() const { return lastAnswer_; }
  std::string masked(std::string_view text) const;
  /// As elements of XML, one for each line.
  std::string toXml() const;

 private:
  void addLine(const char* from, std::string line);
  void addSentLine(std::string_view line);
  void addReceivedLine(std::string_view line);

  struct Line {
    const char* from;
    std::string text;
  };
  std::vector<std::string> secrets_;
  std::deque<Line> lines_;
  bool isCut_ = false;
  bool logsIn_ = false, leaves_ = false;
  std::string lastCommand_, lastAnswer_;
};

}  // namespace platform
