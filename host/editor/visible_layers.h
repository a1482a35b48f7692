#pragma once

#include <unordered_map>

#include "brx/db_database.h"

namespace host {

/// The states of a drawing's layers, read once for a search.
class VisibleLayers {
 public:
  struct State {
    bool off = false, frozen = false, locked = false;
    bool isVisible() const { return !off && !frozen; }
  };
  explicit VisibleLayers(AcDbDatabase& drawing);
  State of(AcDbObjectId layer) const;
  bool isZero(AcDbObjectId layer) const { return layer == zero_ || layer.isNull(); }

 private:
  std::unordered_map<const AcDbStub*, State> states_;
  AcDbObjectId zero_;
};

}  // namespace host
