#pragma once

#include <string>

/// Lets the user choose one of the linetypes of the working database. "ByLayer" and "ByBlock" are not
/// offered.
class CAcadLinetypeDialog {
 public:
  /// The current linetype is preselected, or the first where the drawing doesn't have it.
  explicit CAcadLinetypeDialog(std::wstring linetype) : linetype_(std::move(linetype)) {}

  /// 1, or 2 when it was cancelled.
  int doModal();
  /// The chosen one; after a cancel the one that was given. "" when the drawing has none to choose.
  const std::wstring& linetype() const { return linetype_; }

 private:
  std::wstring linetype_;
};
