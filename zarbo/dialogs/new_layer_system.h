#pragma once

#include <string>

#include "platform/desktop/grid.h"

/// Asks for the name of a new layer system, and for the one whose keys it begins with.
class CNewLayerSystem {
 public:
  /// The dialog's grid of systems: from row 2 on they can be copied.
  CNewLayerSystem(const platform::Grid& systems, int nameColumn)
      : systems_(systems), nameColumn_(nameColumn) {}

  /// 1, or 2 when it was cancelled.
  int doModal();
  const std::wstring& name() const { return name_; }
  /// Among the systems that can be copied, from 0; -1 without any.
  int source() const { return source_; }

 private:
  const platform::Grid& systems_;
  int nameColumn_;
  std::wstring name_;
  int source_ = -1;
};
