#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

namespace mdb {

/// What can't be read of a Jet file; the text names the place.
struct JetError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

using ByteView = std::span<const uint8_t>;

/// A number of little-endian bytes. Fails when `bytes` ends before it.
template <class Number>
Number numberAt(ByteView bytes, size_t offset) {
  if (offset > bytes.size() || bytes.size() - offset < sizeof(Number)) throw JetError("a value is cut off");
  Number number;
  std::memcpy(&number, bytes.data() + offset, sizeof number);
  return number;
}

inline ByteView partOf(ByteView bytes, size_t offset, size_t length) {
  if (offset > bytes.size() || bytes.size() - offset < length) throw JetError("a value is cut off");
  return bytes.subspan(offset, length);
}

}  // namespace mdb
