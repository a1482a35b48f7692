#pragma once

#include <exception>

#include "brx/db_database.h"
#include "host/access/arguments.h"

namespace host {

/// Ends the making or changing of an object: LISP gets nil, and the reason in ERRNO.
struct ObjectRefusal : std::exception {
  explicit ObjectRefusal(Errno reason) : reason(reason) {}
  const char* what() const noexcept override { return "refused"; }
  Errno reason;
};
inline void require(bool holds, Errno reason) {
  if (!holds) throw ObjectRefusal(reason);
}
inline void require(Acad::ErrorStatus status) {
  if (status != Acad::eOk) throw ObjectRefusal(errnoOf(status));
}

/// Takes back what was changed since it was made, unless told to keep it.
class Undoable {
 public:
  explicit Undoable(AcDbDatabase& drawing) : drawing_(drawing), mark_(drawing.undoMark()) {}
  ~Undoable() {
    if (kept_) {
      drawing_.undoKeep(mark_);
    } else {
      drawing_.undoTo(mark_);
    }
  }
  Undoable(const Undoable&) = delete;
  Undoable& operator=(const Undoable&) = delete;
  void keep() { kept_ = true; }

 private:
  AcDbDatabase& drawing_;
  size_t mark_;
  bool kept_ = false;
};

}  // namespace host
