// Byte-list texts, and the keys and signatures that come in them.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/crypto/signing.h"
#include "platform/text/utf.h"
#include "zarbo/support/byte_list.h"

namespace {

/// Keys beyond this, some 1,000 bits, only make runs slow.
constexpr size_t longestBlob = 600;
constexpr size_t longestInput = 4096;

void check(bool holds) {
  if (!holds) std::abort();
}

// A key of any numbers, as the lists name them or as the bytes themselves.
void tryKey(const std::vector<uint8_t>& blob, const std::vector<uint8_t>& signature) {
  if (blob.size() > longestBlob) return;
  const auto key = platform::SigningKey::fromBlob(blob);
  if (!key) return;
  key->verify({1, 2, 3}, signature);
  key->sign({1, 2, 3});
  key->privateBlob();
  const auto open = key->publicBlob();
  check(open && platform::SigningKey::fromBlob(*open).has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > longestInput) return 0;
  const std::wstring text = fromUtf8({reinterpret_cast<const char*>(data), size});
  const std::vector<uint8_t> bytes = bytesOfListText(text);
  check(bytes.size() <= text.size());
  check(bytesOfListText(byteListText(bytes)) == bytes);
  tryKey(bytes, bytesOfText(text));
  tryKey({data, data + size}, bytes);
  return 0;
}
