#pragma once

#include <unordered_set>
#include <vector>

#include "brx/db_database.h"

namespace host {

/// Who draws a drawing must know which objects changed, and what the looks of an object depend on.

/// From now on the drawing notes which objects and variables change, by members, erasing, adding and undo.
void noteChanges(AcDbDatabase& drawing);
/// What changed since the last call, each once: ids, and header variables by their index.
struct Changes {
  std::vector<AcDbObjectId> objects;
  std::vector<size_t> variables;
  bool empty() const { return objects.empty() && variables.empty(); }
};
Changes takeChanges(AcDbDatabase& drawing);
bool hasChanges(const AcDbDatabase& drawing);

/// While it lives it collects what is read: objects that are opened, and header variables. Entities inside of
/// blocks stand as their block, so that the blocks of large drawings stay one source each.
class ReadLog {
 public:
  using Source = const void*;
  /// Entities of `space` stand for themselves.
  explicit ReadLog(AcDbObjectId space);
  ~ReadLog();
  ReadLog(const ReadLog&) = delete;
  ReadLog& operator=(const ReadLog&) = delete;

  /// The next opening of this object doesn't count.
  void pass(AcDbObjectId object) { last_ = object.stub(); }
  std::unordered_set<Source> take() { return std::move(sources_); }
  static Source sourceOf(AcDbObjectId object, AcDbObjectId space);
  static Source sourceOf(size_t variable);

  static void noteObject(AcDbStub* stub) {
    if (current) current->add(stub);
  }
  static void noteVariable(size_t variable) {
    if (current) current->sources_.insert(sourceOf(variable));
  }

 private:
  void add(AcDbStub* stub);
  static inline ReadLog* current = nullptr;

  ReadLog* const outer_;
  const AcDbObjectId space_;
  const AcDbStub* last_ = nullptr;
  std::unordered_set<Source> sources_;
};

}  // namespace host
