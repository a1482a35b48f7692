#pragma once

#include <vector>

#include "brx/editor_reactor.h"

namespace host {

/// The host's editor object: passes notifications on to the reactors, in the order of adding. A
/// reactor may remove itself or others while it is told.
class Editor : public AcEditor {
 public:
  Editor();
  ~Editor() override;
  void addReactor(AcEditorReactor* reactor) override;
  void removeReactor(AcEditorReactor* reactor) override;
  bool addIdleFunction(AcedOnIdleMsgFn function);
  bool removeIdleFunction(AcedOnIdleMsgFn function);
  /// The host has nothing to do any more: calls who registered for it.
  void tellIdle() const;

  template <class Notify>
  void tell(Notify notify) {
    const std::vector<AcEditorReactor*> told = reactors_;
    for (AcEditorReactor* each : told) {
      if (holds(each)) notify(*each);
    }
  }

 private:
  bool holds(const AcEditorReactor* reactor) const;
  std::vector<AcEditorReactor*> reactors_;
  std::vector<AcedOnIdleMsgFn> idle_;
};

/// The one editor; stands in the registry under "AcEditor".
Editor& editor();

}  // namespace host
