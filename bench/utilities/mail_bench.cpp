// Sends one file to a mail server of this machine and prints the seconds: mail_bench PORT CERTIFICATE FILE
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "platform/mail/mail_transport.h"
#include "platform/text/utf.h"

int main(int count, char** arguments) {
  if (count != 4) return 2;
  using Clock = std::chrono::steady_clock;
  platform::MailTransport transport;
  transport.setServer(L"localhost");
  transport.setPort(std::atoi(arguments[1]));
  transport.setAccount(L"reports");
  transport.setPassword(L"s3cret!pass");
  transport.setTrustFile(fromUtf8(arguments[2]));
  platform::MailMessage message;
  message.setSenderAddress(L"a@b.example");
  message.addRecipient(L"", L"c@d.example");
  std::wstring type;
  const auto start = Clock::now();
  if (!message.addFile(fromUtf8(arguments[3]), type) || !transport.send(message)) {
    transport.saveLastError(L"mail_bench.xml");
    std::fprintf(stderr, "%s: not sent\n", arguments[3]);
    return 1;
  }
  const std::chrono::duration<double> seconds = Clock::now() - start;
  std::printf("%.3f\n", seconds.count());
  return 0;
}
