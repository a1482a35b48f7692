#include "host/console/command_line.h"

#include <cstdio>
#include <utility>

#include "host/root/host.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// A script that never asks must not fill the memory.
constexpr size_t longestRecord = 4 << 20;

void writeToStandardOutput(std::wstring_view text) {
  const std::string bytes = toUtf8(text);
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  std::fflush(stdout);
}

}  // namespace

void CommandLine::print(std::wstring_view text) {
  printed_ += text.size();
  record_ += text;
  if (record_.size() > longestRecord) record_.erase(0, record_.size() - longestRecord / 2);
  if (shown_) show(text);
}

void CommandLine::show(std::wstring_view text) {
  if (text.empty()) return;
  atLineBegin_ = text.back() == L'\n';
  if (sink_) {
    sink_(text);
  } else {
    writeToStandardOutput(text);
  }
}

void CommandLine::freshLine() {
  if (!atLineBegin_) show(L"\n");
}

std::wstring CommandLine::takeRecord() { return std::exchange(record_, {}); }

CommandLine& commandLine() { return theOne<CommandLine>(); }

}  // namespace host
