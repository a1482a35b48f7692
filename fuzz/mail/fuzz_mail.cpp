// Answers of a mail server with anything in them, and texts from such a server that become header lines: a
// report stays bounded, is XML and tells no secret, and no text begins a line of its own.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>

#include "platform/mail/conversation.h"
#include "platform/mail/encodings.h"
#include "platform/mail/headers.h"
#include "platform/text/utf.h"

namespace {

void check(bool holds) {
  if (!holds) std::abort();
}

const std::string secret = "s3cret!pass", token = "AHJlcG9ydHMAczNjcmV0";

// Every byte that isn't text must have been replaced.
void checkXml(const std::string& xml, bool tokenSent) {
  check(isValidUtf8(xml));
  for (const char c : xml) check(static_cast<unsigned char>(c) >= ' ' || c == '\n' || c == '\t' || c == '\r');
  check(xml.find(secret) == std::string::npos);
  // What was never sent is no secret.
  check(!tokenSent || xml.find(token) == std::string::npos);
}

void checkHeader(const std::string& value) {
  for (size_t at = 0; at < value.size(); ++at) {
    check(static_cast<unsigned char>(value[at]) < 0x80);
    if (value[at] == '\n') check(at > 0 && value[at - 1] == '\r');
    if (value[at] == '\r') check(value.compare(at, 3, "\r\n ") == 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string answers(reinterpret_cast<const char*>(data), size);
  platform::Conversation talk;
  talk.keepSecret(secret);
  const char* const commands[] = {"EHLO me\r\n", "STARTTLS\r\n", "EHLO me\r\n", "AUTH LOGIN\r\n",
                                  "MAIL FROM:<a@b.c>\r\n"};
  size_t command = 0;
  bool logsIn = false, tokenSent = false;
  for (size_t at = 0; at < answers.size();) {
    const size_t end = std::min(answers.find('\n', at), answers.size() - 1) + 1;
    talk.addReceived(answers.substr(at, end - at));
    at = end;
    if (logsIn && talk.lastAnswer().starts_with("334")) {
      talk.addSent(token + "\r\n");
      tokenSent = true;
      continue;
    }
    logsIn = command < std::size(commands) && std::string_view(commands[command]).starts_with("AUTH");
    if (command < std::size(commands)) {
      talk.addSent(commands[command++]);
    }
  }
  checkXml(talk.toXml(), tokenSent);
  check(talk.toXml().size() < 2'000'000);
  check(talk.step() != nullptr);

  const std::wstring text = fromUtf8(answers);
  checkHeader(platform::headerText(text));
  checkHeader(platform::headerMailbox(text, "a@b.c"));
  checkHeader(platform::headerFileName(text));
  const std::string lines = platform::quotedPrintable(platform::withMailLineEnds(answers));
  for (size_t at = 0; at < lines.size(); at = lines.find('\n', at) + 1) {
    const size_t end = lines.find('\n', at);
    check(end == std::string::npos ? lines.size() - at <= 76 : end - at <= 77);
    if (end == std::string::npos) break;
  }
  return 0;
}
