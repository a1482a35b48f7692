#include "host/database/stub_pages.h"

#include <new>
#include <type_traits>

#include "host/database/stubs.h"
#include "platform/process/pages.h"

namespace host {

namespace {

static_assert(std::is_trivially_destructible_v<AcDbStub>);

constexpr size_t pageBytes = 1 << 16;
constexpr size_t stubsOfPage = pageBytes / sizeof(AcDbStub);

}  // namespace

StubPages::~StubPages() {
  for (AcDbStub* const page : pages_) emptyPages(page, pageBytes);
}

AcDbStub& StubPages::add() {
  if (size_ == pages_.size() * stubsOfPage) {
    pages_.push_back(nullptr);
    try {
      pages_.back() = static_cast<AcDbStub*>(takePages(pageBytes));
    } catch (...) {
      pages_.pop_back();
      throw;
    }
  }
  return *new (&(*this)[size_++]) AcDbStub;
}

AcDbStub& StubPages::operator[](size_t index) const {
  return pages_[index / stubsOfPage][index % stubsOfPage];
}

}  // namespace host
