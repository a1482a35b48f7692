#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

using Bytes = std::vector<uint8_t>;

/// A signature key (RSA), private or public, and signatures over the MD5 hash of a message.
///
/// A key's blob has this layout, all numbers with the lowest byte first: type (7 private, 6 public),
/// 2, 0, 0, algorithm 0x2400, "RSA2" or "RSA1", bit length, public exponent, modulus; a private one
/// goes on with the primes p and q, the exponents dp and dq, the coefficient q⁻¹ mod p and the private
/// exponent. Primes, dp, dq and the coefficient take half as many bytes as the modulus. Signatures,
/// too, have the lowest byte first.
class SigningKey {
 public:
  static constexpr unsigned usualBits = 1024;
  static constexpr unsigned mostBits = 16384;

  static std::optional<SigningKey> generate(unsigned bits = usualBits);
  /// Either kind of blob; nothing when it isn't one, or its numbers don't belong together.
  static std::optional<SigningKey> fromBlob(const Bytes& blob);

  SigningKey(SigningKey&&) noexcept;
  SigningKey& operator=(SigningKey&&) noexcept;
  ~SigningKey();

  /// Nothing when the key has no private part.
  std::optional<Bytes> privateBlob() const;
  std::optional<Bytes> publicBlob() const;
  std::optional<Bytes> sign(const Bytes& message) const;
  bool verify(const Bytes& message, const Bytes& signature) const;

 private:
  struct Key;
  explicit SigningKey(std::unique_ptr<Key> key);
  std::unique_ptr<Key> key_;
};

}  // namespace platform
