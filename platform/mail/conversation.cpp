#include "platform/mail/conversation.h"

#include <algorithm>

#include "platform/text/xml_text.h"

namespace platform {

namespace {

constexpr size_t mostLines = 200;
constexpr size_t longestLine = 1000;
constexpr std::string_view mask = "***";

/// Calls `use` with each line, without its end.
template <class Use>
void forEachLine(std::string_view bytes, Use use) {
  while (!bytes.empty()) {
    const size_t end = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    use(line);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
}

}  // namespace

void Conversation::keepSecret(const std::string& text) {
  if (text.empty() || std::find(secrets_.begin(), secrets_.end(), text) != secrets_.end()) return;
  secrets_.push_back(text);
  // Longer ones first, since a shorter one may be a part of them.
  std::stable_sort(secrets_.begin(), secrets_.end(),
                   [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

void Conversation::clear() { *this = Conversation(); }

void Conversation::addSent(std::string_view bytes) {
  forEachLine(bytes, [this](std::string_view line) { addSentLine(line); });
}

void Conversation::addReceived(std::string_view bytes) {
  forEachLine(bytes, [this](std::string_view line) { addReceivedLine(line); });
}

void Conversation::addSentLine(std::string_view line) {
  constexpr std::string_view logIn = "AUTH ";
  if (logsIn_) {
    if (line != "*") keepSecret(std::string(line));  // which gives the log-in up
    return addLine("client", std::string(mask));
  }
  leaves_ = line.starts_with("QUIT");
  if (!leaves_) lastCommand_ = line.substr(0, line.find(' '));
  if (!line.starts_with(logIn)) return addLine("client", masked(line));
  logsIn_ = true;
  const size_t answer = line.find(' ', logIn.size());
  if (answer != std::string_view::npos) keepSecret(std::string(line.substr(answer + 1)));
  addLine("client", std::string(logIn) + std::string(mask));
}

void Conversation::addReceivedLine(std::string_view line) {
  const bool isChallenge = logsIn_ && line.starts_with("334");
  if (!isChallenge) logsIn_ = false;
  std::string answer = isChallenge ? "334 " + std::string(mask) : masked(line);
  if (answer.size() > longestLine) answer.resize(longestLine);
  if (!leaves_) lastAnswer_ = answer;
  addLine("server", std::move(answer));
}

void Conversation::addLine(const char* from, std::string line) {
  if (line.size() > longestLine) line.resize(longestLine);
  lines_.push_back({from, std::move(line)});
  if (lines_.size() <= mostLines) return;
  lines_.pop_front();
  isCut_ = true;
}

std::string Conversation::masked(std::string_view text) const {
  std::string out(text);
  for (const std::string& secret : secrets_) {
    for (size_t at = 0; (at = out.find(secret, at)) != std::string::npos; at += mask.size())
      out.replace(at, secret.size(), mask);
  }
  return out;
}

const char* Conversation::step() const {
  constexpr struct {
    std::string_view command;
    const char* step;
  } steps[] = {{"EHLO", "greeting"},  {"HELO", "greeting"}, {"STARTTLS", "secure connection"},
               {"AUTH", "log in"},    {"NOOP", "check"},    {"MAIL", "sender"},
               {"RCPT", "recipient"}, {"DATA", "message"}};
  for (const auto& each : steps) {
    if (each.command == lastCommand_) return each.step;
  }
  return "connect";
}

std::string Conversation::toXml() const {
  std::string xml = isCut_ ? "    <cut/>\n" : "";
  for (const Line& each : lines_)
    xml += "    <line from=\"" + std::string(each.from) + "\">" + xmlText(each.text) + "</line>\n";
  return xml;
}

}  // namespace platform
