// The program at a terminal, typed at as a person does.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

class Terminal {
 public:
  /// Null for the usual module.
  explicit Terminal(const char* option = "--no-module", const char* value = nullptr) {
    std::string pattern = (std::filesystem::temp_directory_path() / "zarbo-terminal-XXXXXX").string();
    settings_ = mkdtemp(pattern.data());
    child_ = forkpty(&end_, nullptr, nullptr, nullptr);
    if (child_ == 0) {
      setenv("TERM", "dumb", 1);
      execl(ZARBO_HOST, "zarbo-host", "--settings", settings_.c_str(), option, value, nullptr);
      _exit(127);
    }
  }
  ~Terminal() {
    close(end_);
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
    std::filesystem::remove_all(settings_);
  }

  // A prompt's text must not stand in the line that asks for it, since the terminal shows that as well.
  void type(const std::string& text) {
    ASSERT_EQ(write(end_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void enter(const std::string& line) { type(line + "\n"); }
  /// Reads until the program has shown the text; what was shown before it is gone then.
  testing::AssertionResult shows(const std::string& text) {
    constexpr int patience = 10000;  // milliseconds
    while (true) {
      const size_t at = shown_.find(text);
      if (at != std::string::npos) {
        shown_.erase(0, at + text.size());
        return testing::AssertionSuccess();
      }
      pollfd wait{end_, POLLIN, 0};
      char buffer[4096];
      const ssize_t got = poll(&wait, 1, patience) > 0 ? read(end_, buffer, sizeof buffer) : 0;
      if (got <= 0) return testing::AssertionFailure() << "not shown: " << text << "\nbut: " << shown_;
      shown_.append(buffer, static_cast<size_t>(got));
    }
  }

 private:
  std::string settings_, shown_;
  int end_ = -1;
  pid_t child_ = -1;
};

TEST(Terminal, AsksUntilTheAnswerSuits) {
  Terminal terminal;
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(getpoint (strcat \"Where\" \"? \"))");
  ASSERT_TRUE(terminal.shows("Where? "));
  terminal.enter("nowhere");
  ASSERT_TRUE(terminal.shows("Invalid point."));
  ASSERT_TRUE(terminal.shows("Where? "));
  terminal.enter("1,2");
  ASSERT_TRUE(terminal.shows("(1.0 2.0 0.0)"));
  // Blanks end inputs, so that several can be typed ahead; in a text they stay.
  terminal.enter("(list (getpoint (strcat \"A\" \": \")) (getdist \"B: \"))");
  ASSERT_TRUE(terminal.shows("A: "));
  terminal.enter("@1,1 7.5");
  ASSERT_TRUE(terminal.shows("((2.0 3.0 0.0) 7.5)"));
  terminal.enter("(getstring T (strcat \"Name\" \": \"))");
  ASSERT_TRUE(terminal.shows("Name: "));
  terminal.enter("two words");
  ASSERT_TRUE(terminal.shows("\"two words\""));
  // Forms stand for their values.
  terminal.enter("(getreal (strcat \"Number\" \": \"))");
  ASSERT_TRUE(terminal.shows("Number: "));
  terminal.enter("(car 5)");
  ASSERT_TRUE(terminal.shows("; error: "));
  ASSERT_TRUE(terminal.shows("Number: "));
  terminal.enter("(* 2 2.5)");
  ASSERT_TRUE(terminal.shows("5.0"));
}

TEST(Terminal, InterruptEscapeAndEndOfInputCancel) {
  const char* const cancels[] = {"\x03", "\x1b\n", "\x04"};
  Terminal terminal;
  for (const char* const cancel : cancels) {
    ASSERT_TRUE(terminal.shows("Command: "));
    terminal.enter("(getpoint (strcat \"Where\" \"? \"))");
    ASSERT_TRUE(terminal.shows("Where? "));
    terminal.type(cancel);
    ASSERT_TRUE(terminal.shows("; error: Function cancelled"));
  }
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(+ 1 2)");
  ASSERT_TRUE(terminal.shows("3"));
}

TEST(Terminal, InterruptEndsADownload) {
  // A server that never answers.
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  socklen_t size = sizeof address;
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  Terminal terminal(nullptr);
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(list (DownloadFile \"http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) +
                 "/\" (strcat (GetTempPath) \"never\")) (strcat \"and \" \"on\"))");
  const int asked = accept(listener, nullptr, nullptr);
  terminal.type("\x03");
  ASSERT_TRUE(terminal.shows("(nil \"and on\")"));
  close(asked);
  close(listener);
}

TEST(Terminal, RunsTypedCommandsAndThoseThatLispLeftOpen) {
  Terminal terminal;
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("line 0,0 @10<90");
  ASSERT_TRUE(terminal.shows("Specify next point or [Undo]: "));
  ASSERT_TRUE(terminal.shows("Specify next point or [Undo]: "));
  terminal.type("\n");
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(command \"CIRCLE\" '(0 5))");
  ASSERT_TRUE(terminal.shows("Specify radius of circle or [Diameter]: "));
  terminal.enter("2");
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(sslength (ssget))");
  ASSERT_TRUE(terminal.shows("Select objects: "));
  terminal.enter("c -1,-1 3,11");
  ASSERT_TRUE(terminal.shows("2 found"));
  terminal.type("\n");
  ASSERT_TRUE(terminal.shows("2"));
  // A command's name that is a symbol with a value is LISP.
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(setq line 42)");
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("line");
  ASSERT_TRUE(terminal.shows("42"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("zoom");
  ASSERT_TRUE(terminal.shows("Window]: "));
  terminal.type("\x03");
  ASSERT_TRUE(terminal.shows("*Cancel*"));
  ASSERT_TRUE(terminal.shows("Command: "));
}

TEST(Terminal, TimersTickWhileThePromptsWait) {
  Terminal terminal("--module", ZARBO_TIMER_MODULE);
  ASSERT_TRUE(terminal.shows("Command: "));
  ASSERT_TRUE(terminal.shows("tick 5."));
  terminal.enter("(getstring (strcat \"Name\" \": \"))");
  ASSERT_TRUE(terminal.shows("Name: "));
  ASSERT_TRUE(terminal.shows("tick 12."));
  terminal.enter("some");
  ASSERT_TRUE(terminal.shows("\"some\""));
}

TEST(Terminal, CompletesByTabAndHelps) {
  Terminal terminal;
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(defun c:mark-it () \"marked\")");
  ASSERT_TRUE(terminal.shows("C:MARK-IT"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("mark\t");
  ASSERT_TRUE(terminal.shows("\"marked\""));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(strle\t \"xyz\")");
  ASSERT_TRUE(terminal.shows("\n3"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(getvar \"cmdec\t\")");
  ASSERT_TRUE(terminal.shows("\n1"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(vl-file-directory-p \"/us\t\")");
  ASSERT_TRUE(terminal.shows("T\r\n"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(help \"substr\")");
  ASSERT_TRUE(terminal.shows("SUBSTR: function, 2 to 3 arguments"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("(help \"mark\")");
  ASSERT_TRUE(terminal.shows("C:MARK-IT"));
  ASSERT_TRUE(terminal.shows("Command: "));
  terminal.enter("help");
  ASSERT_TRUE(terminal.shows("Commands ("));
  ASSERT_TRUE(terminal.shows("Command: "));
}

}  // namespace
