#pragma once

#include <cstddef>
#include <vector>

#include "brx/db_ids.h"

namespace host {

/// The stubs of a drawing, which never move. Names of objects are their addresses, and LISP or a module may
/// keep one for longer than the drawing lives: it then finds a stub of zeroes, without an object, and never
/// one of another drawing.
class StubPages {
  template <class Pages, class Stub>
  struct Iterator {
    Pages* pages;
    size_t at;
    Stub& operator*() const { return (*pages)[at]; }
    Iterator& operator++() { return ++at, *this; }
    bool operator!=(const Iterator& other) const { return at != other.at; }
  };

 public:
  StubPages() = default;
  ~StubPages();
  StubPages(const StubPages&) = delete;
  StubPages& operator=(const StubPages&) = delete;

  AcDbStub& add();
  size_t size() const { return size_; }
  AcDbStub& operator[](size_t index) const;

  auto begin() { return Iterator<StubPages, AcDbStub>{this, 0}; }
  auto end() { return Iterator<StubPages, AcDbStub>{this, size_}; }
  auto begin() const { return Iterator<const StubPages, const AcDbStub>{this, 0}; }
  auto end() const { return Iterator<const StubPages, const AcDbStub>{this, size_}; }

 private:
  std::vector<AcDbStub*> pages_;
  size_t size_ = 0;
};

}  // namespace host
