#pragma once

#include <exception>
#include <memory>

#include "brx/db_ids.h"
#include "brx/resbuf.h"
#include "host/lisp/value.h"

namespace host {

/// A filter list that means nothing; `number` is what the variable ERRNO tells of it.
struct FilterError : std::exception {
  explicit FilterError(int number) : number(number) {}
  const char* what() const noexcept override { return "bad SSGET list"; }
  int number;
};

/// Which entities a filter list lets through. The groups of the list must all be met: texts are patterns,
/// names of records and types without case; `(-4 . ">=")` and the like compare the group behind them, points
/// by a test for each coordinate (">,>,*"); "<AND" "<OR" "<XOR" "<NOT" enclose groups; `(-3 ("APP"))` asks
/// for extended data. What an entity's list leaves out counts with its default, such as 62 by 256.
///
/// For one walk over entities: names are looked up once. Not to be kept while the drawing changes.
class EntityFilter {
 public:
  /// Lets everything through.
  EntityFilter();
  /// Of a list as LISP gives it to `ssget`. Throws FilterError.
  explicit EntityFilter(const lisp::Value& list);
  /// Of buffers as modules give them to `acedSSGet`; null lets everything through. Throws FilterError.
  explicit EntityFilter(const resbuf* groups);
  EntityFilter(EntityFilter&&) noexcept;
  EntityFilter& operator=(EntityFilter&&) noexcept;
  ~EntityFilter();

  /// False for what is no entity. Erased ones are judged like others. The entity may be open.
  bool matches(AcDbObjectId entity);

 private:
  struct Node;
  std::unique_ptr<Node> root_;
};

}  // namespace host
