#pragma once

#include <memory>

#include "host/editor/request.h"

namespace host {

/// Whoever sits before the host and answers its prompts and drags: at a terminal, or before a window.
class Person {
 public:
  virtual ~Person() = default;
  /// Waits for the next input. A line comes as it was typed, blanks and all; cursor moves come only where the
  /// request follows the cursor. `Cancel` when the input ended or was interrupted.
  virtual InputItem next(const Request& request) = 0;
  /// False when nobody would answer now.
  virtual bool isPresent() const { return true; }
  /// Whether the drawing shows before that person, on a screen of its own size.
  virtual bool hasScreen() const { return false; }
};

/// Null where nobody is there: then the host never waits.
Person* person();
/// Whether there is one with a screen, present or not.
bool isOnScreen();
void setPerson(std::unique_ptr<Person> next);

}  // namespace host
