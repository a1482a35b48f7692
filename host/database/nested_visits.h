#pragma once

#include <cstddef>

namespace host {

/// What one operation visits inside of block references, whether it draws, selects or takes apart. Files may
/// nest blocks so that their contents multiply without end; no real drawing shows as much.
constexpr size_t mostNestedVisits = 5'000'000;
constexpr int deepestNesting = 64;

/// What an operation left out.
struct NestedLoss {
  bool tooMany = false, tooDeep = false;
  bool any() const { return tooMany || tooDeep; }
};
/// On the command line; nothing for no loss.
void tellLoss(const NestedLoss& loss);

/// The outermost one is the operation. At its end it tells on the command line when something was left out.
class NestedOperation {
 public:
  NestedOperation();
  /// One part of an operation that has visited so many before; the caller tells of `loss`.
  explicit NestedOperation(size_t visitedBefore);
  static size_t visits();
  static NestedLoss loss();
  ~NestedOperation();
  NestedOperation(const NestedOperation&) = delete;
  NestedOperation& operator=(const NestedOperation&) = delete;

 private:
  bool tells_ = true;
};

/// The way into one reference.
class NestedDescent {
 public:
  NestedDescent();
  ~NestedDescent();
  NestedDescent(const NestedDescent&) = delete;
  NestedDescent& operator=(const NestedDescent&) = delete;
  /// False when it is too deep.
  bool isAllowed() const;

 private:
  NestedOperation operation_;
};

/// Before each visit; `weight` is what it costs in plain visits. False when it must be left out.
bool countNestedVisit(size_t weight = 1);

}  // namespace host
