#pragma once

#include <string>
#include <vector>

#include "platform/desktop/form.h"

/// The list of files that go with a support report, edited in place.
class CAttachmentDialog {
 public:
  explicit CAttachmentDialog(std::vector<std::wstring>& files);
  /// The result of the dialog. Only OK changes the list.
  int doModal();

 private:
  void add();
  void remove();
  void store();

  std::vector<std::wstring>& files_;
  std::wstring folder_;
  platform::Form form_;
};
