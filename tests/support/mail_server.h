#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "tests/support/temporary_folder.h"

/// A certificate of the tests' own for one host, that vouches for itself.
class TestCertificate {
 public:
  explicit TestCertificate(const std::string& host = "localhost") {
    const std::string make =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=" +
        host + " -addext subjectAltName=DNS:" + host + " -keyout '" + key() + "' -out '" + file() +
        "' 2>/dev/null";
    if (std::system(make.c_str()) != 0) std::abort();
  }
  std::string file() const { return folder_ / "certificate.pem"; }
  std::string key() const { return folder_ / "key.pem"; }

 private:
  TemporaryFolder folder_;
};

/// A mail server on the loopback, alone with its test: tests/support/mail_server.py tells the modes.
class MailServer {
 public:
  MailServer(const std::string& mode, const TestCertificate& certificate) {
    int output[2];
    if (pipe(output) != 0) std::abort();
    process_ = fork();
    if (process_ == 0) {
      dup2(output[1], STDOUT_FILENO);
      execl("/usr/bin/python3", "python3", MAIL_SERVER, mode.c_str(), folder_.path().c_str(),
            certificate.file().c_str(), certificate.key().c_str(), nullptr);
      _exit(127);
    }
    close(output[1]);
    std::string line;
    for (char c; read(output[0], &c, 1) == 1 && c != '\n';) line += c;
    close(output[0]);
    port_ = std::atoi(line.c_str());
  }
  ~MailServer() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  MailServer(const MailServer&) = delete;
  MailServer& operator=(const MailServer&) = delete;

  /// 0 when the server didn't start.
  int port() const { return port_; }
  /// What was received, as the server has written it: "1/Subject".
  std::string received(const std::string& name) const { return folder_.read(name); }
  bool hasMessage(int number) const { return std::filesystem::exists(folder_ / std::to_string(number)); }
  const TemporaryFolder& folder() const { return folder_; }

 private:
  TemporaryFolder folder_;
  pid_t process_ = -1;
  int port_ = 0;
};
