#pragma once

#include <string>

/// What the installation says of the support mailbox and of the mail server that takes reports: values of the
/// section "Installation", each with a default of the program's own.
struct SupportSettings {
  std::wstring server, account, password;  ///< scrambled, in the section too
  int port;
  std::wstring trustFile;  ///< certificates (PEM) in place of the system's; "" for the system's
  std::wstring address;
  std::wstring domain;  ///< of the support mailbox, without "@"
};

SupportSettings supportSettings();
