#include "platform/download/download.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>

#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;
using namespace std::chrono_literals;

sockaddr_in loopback(uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

const std::string trickle = "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n";

/// A server of this machine that answers each request, one after the other, with a text and closes; an empty
/// text is never sent, and the connection stays open. Behind the text `trickle` comes ten bytes a second.
class Server {
 public:
  explicit Server(std::function<std::string(const std::string& path)> answer) : answer_(std::move(answer)) {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
    listen(listener_, 8);
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
  }
  ~Server() {
    over_ = true;
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
    for (const int each : silent_) close(each);
  }
  std::wstring url(const std::wstring& path) const {
    return L"http://127.0.0.1:" + std::to_wstring(port_) + path;
  }
  /// Header lines of the last request.
  std::string request() const {
    const std::lock_guard lock(mutex_);
    return request_;
  }

 private:
  void serve() {
    for (int client; (client = accept(listener_, nullptr, nullptr)) >= 0;) {
      std::string text(4096, '\0');
      const ssize_t count = recv(client, text.data(), text.size(), 0);
      text.resize(count > 0 ? static_cast<size_t>(count) : 0);
      {
        const std::lock_guard lock(mutex_);
        request_ = text;
      }
      const size_t start = std::min(text.find(' '), text.size() - 1) + 1;
      const std::string answer = answer_(text.substr(start, text.find(' ', start) - start));
      if (answer.empty()) {
        silent_.push_back(client);
        continue;
      }
      send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
      while (answer == trickle && !over_ && send(client, "x", 1, MSG_NOSIGNAL) == 1)
        std::this_thread::sleep_for(100ms);
      close(client);
    }
  }

  std::function<std::string(const std::string&)> answer_;
  int listener_;
  uint16_t port_;
  std::vector<int> silent_;
  std::atomic<bool> over_ = false;
  mutable std::mutex mutex_;
  std::string request_;
  std::thread thread_;
};

constexpr DownloadLimits impatient{1s, 1s, 3s, 1000, 3};

std::string answerTo(const std::string& path) {
  if (path == "/good") return "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nnew!";
  if (path == "/short") return "HTTP/1.1 200 OK\r\nContent-Length: 400\r\n\r\nnew!";
  if (path == "/missing") return "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnew!";
  if (path == "/long") return "HTTP/1.1 200 OK\r\n\r\n" + std::string(1001, 'x');
  if (path == "/once") return "HTTP/1.1 302 Found\r\nLocation: /good\r\nContent-Length: 0\r\n\r\n";
  if (path == "/round") return "HTTP/1.1 302 Found\r\nLocation: /round\r\nContent-Length: 0\r\n\r\n";
  if (path == "/local")
    return "HTTP/1.1 302 Found\r\nLocation: file:///etc/hosts\r\nContent-Length: 0\r\n\r\n";
  if (path == "/a%20b/%c3%a4") return "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nblank";
  if (path == "/trickle") return trickle;
  if (path == "/noise") return "\x01\x02\x03 no protocol\r\n\r\n";
  return "";
}

TEST(Download, ReplacesTheFileByACompleteTransferOnly) {
  const Server server(answerTo);
  const TemporaryFolder folder;
  for (const wchar_t* path : {L"/short", L"/missing", L"/long", L"/round", L"/local", L"/noise"}) {
    folder.write("target", "old");
    EXPECT_FALSE(downloadFile(server.url(path), folder.wide("target"), impatient)) << path;
    EXPECT_EQ(folder.read("target"), "old") << path;
    EXPECT_EQ(folder.count(), 1u) << path;
  }
  for (const wchar_t* path : {L"/good", L"/once"}) {
    folder.write("target", "old");
    EXPECT_TRUE(downloadFile(server.url(path), folder.wide("target"), impatient)) << path;
    EXPECT_EQ(folder.read("target"), "new!") << path;
  }
  EXPECT_TRUE(downloadFile(server.url(L"/a b/\u00e4"), folder.wide("target"), impatient));
  EXPECT_EQ(folder.read("target"), "blank");
  folder.write("target", "new!");
  EXPECT_NE(server.request().find("Cache-Control: no-cache"), std::string::npos);
  EXPECT_FALSE(downloadFile(server.url(L"/good"), folder.wide("missing/target"), impatient));
  EXPECT_FALSE(downloadFile(L"file:///etc/hosts", folder.wide("target"), impatient));
  EXPECT_FALSE(downloadFile(L"", folder.wide("target"), impatient));
  EXPECT_EQ(folder.read("target"), "new!");
}

TEST(Download, GivesUpOnAServerThatNeverAnswers) {
  const Server server(answerTo);
  const TemporaryFolder folder;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(downloadFile(server.url(L"/silent"), folder.wide("target"), impatient));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
  EXPECT_EQ(folder.count(), 0u);
}

TEST(Download, GivesUpOnAServerThatTricklesAndWhenToldTo) {
  const Server server(answerTo);
  const TemporaryFolder folder;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(downloadFile(server.url(L"/trickle"), folder.wide("target"), {1s, 2s, 60s}));
  int64_t most = 0;
  EXPECT_FALSE(downloadFile(server.url(L"/trickle"), folder.wide("target"), {1s, 60s, 60s},
                            [&](int64_t come, int64_t total) {
                              most = std::max(most, come);
                              return come == 0 || total != 100000;
                            }));
  EXPECT_GT(most, 0);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
  EXPECT_EQ(folder.count(), 0u);
}

/// A secure server whose certificate nobody has signed but itself.
class SecureServer {
 public:
  explicit SecureServer(const TemporaryFolder& folder) : port_(freePort()) {
    const std::string key = folder / "key.pem", certificate = folder / "certificate.pem";
    const std::string make =
        "openssl req -x509 -newkey rsa:2048 -nodes -subj /CN=localhost -days 2 -keyout '" + key + "' -out '" +
        certificate + "' 2>/dev/null";
    if (std::system(make.c_str()) != 0) return;
    process_ = fork();
    if (process_ != 0) return;
    if (!std::freopen("/dev/null", "w", stdout) || !std::freopen("/dev/null", "w", stderr)) _exit(1);
    execlp("openssl", "openssl", "s_server", "-accept", std::to_string(port_).c_str(), "-key", key.c_str(),
           "-cert", certificate.c_str(), "-www", nullptr);
    _exit(1);
  }
  ~SecureServer() {
    if (process_ > 0) kill(process_, SIGTERM), waitpid(process_, nullptr, 0);
  }
  bool answers() const {
    for (int i = 0; i < 100; ++i, std::this_thread::sleep_for(50ms)) {
      const int client = socket(AF_INET, SOCK_STREAM, 0);
      sockaddr_in address = loopback(port_);
      const bool connected = connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
      close(client);
      if (connected) return true;
    }
    return false;
  }
  std::wstring url() const { return L"https://localhost:" + std::to_wstring(port_) + L"/"; }

 private:
  static uint16_t freePort() {
    const int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    bind(probe, reinterpret_cast<sockaddr*>(&address), size);
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size);
    close(probe);
    return ntohs(address.sin_port);
  }

  uint16_t port_;
  pid_t process_ = -1;
};

TEST(Download, RefusesCertificatesThatNobodyVouchesFor) {
  const TemporaryFolder folder, target;
  const SecureServer server(folder);
  ASSERT_TRUE(server.answers());
  EXPECT_FALSE(downloadFile(server.url(), target.wide("target"), {5s, 5s, 10s, 1 << 20, 3}));
  EXPECT_EQ(target.count(), 0u);
}

}  // namespace
