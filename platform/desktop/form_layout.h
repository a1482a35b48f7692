#pragma once

#include <string>
#include <utility>
#include <vector>

namespace platform {

/// How a form's controls lie in its window: controls by number in rows and columns. What grows with the
/// window is told by the controls.
struct Layout {
  enum class Kind { control, row, column, fields, space };

  Kind kind = Kind::space;
  int control = 0;
  /// Of a row in `fields`: what stands before the control.
  std::wstring label;
  std::vector<Layout> parts;

  Layout() = default;
  Layout(int number) : kind(Kind::control), control(number) {}  // NOLINT: numbers stand for their controls
  Layout(Kind kind, std::vector<Layout> parts) : kind(kind), parts(std::move(parts)) {}
};

/// Side by side, from left to right.
inline Layout row(std::vector<Layout> parts) { return {Layout::Kind::row, std::move(parts)}; }
inline Layout column(std::vector<Layout> parts) { return {Layout::Kind::column, std::move(parts)}; }
/// One below the other, each behind its label; labels share a width.
inline Layout fields(std::vector<Layout> parts) { return {Layout::Kind::fields, std::move(parts)}; }
/// A row of `fields`. The label's "&" marks the letter that leads to the control.
inline Layout field(std::wstring label, int control) {
  Layout made(control);
  made.label = std::move(label);
  return made;
}
/// Takes the room that nothing else wants.
inline Layout space() { return {}; }
/// "&OK" and "&Cancel" at the lower right, or in the middle.
inline Layout okAndCancel() { return row({space(), 1, 2}); }
inline Layout okAndCancelInTheMiddle() { return row({space(), 1, 2, space()}); }

}  // namespace platform
