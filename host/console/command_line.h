#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace host {

/// The text that the host shows in its command line, and keeps for scripts that ask for it.
class CommandLine {
 public:
  using Sink = std::function<void(std::wstring_view)>;

  /// Where shown text goes; standard output until set.
  void setSink(Sink sink) { sink_ = std::move(sink); }
  /// Text of the running program: recorded, and shown unless that is switched off.
  void print(std::wstring_view text);
  /// How many characters were printed so far.
  size_t printed() const { return printed_; }
  /// Text about the program, such as a transcript's: shown and not recorded.
  void show(std::wstring_view text);
  /// A line break, unless the shown text stands at the begin of a line.
  void freshLine();
  /// A person has ended a line, which the terminal has shown.
  void cursorAtLineBegin() { atLineBegin_ = true; }
  /// Text printed since the last call, shown or not.
  std::wstring takeRecord();
  void setShown(bool shown) { shown_ = shown; }
  bool isShown() const { return shown_; }
  /// The user's wish that the text window comes up; a program without one has nothing to do.
  void showTextWindow(bool shown) { textWindow_ = shown; }
  bool textWindowShown() const { return textWindow_; }

 private:
  Sink sink_;
  std::wstring record_;
  size_t printed_ = 0;
  bool shown_ = true;
  bool atLineBegin_ = true;
  bool textWindow_ = false;
};

CommandLine& commandLine();

}  // namespace host
