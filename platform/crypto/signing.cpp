#include "platform/crypto/signing.h"

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/evp.h>
#include <openssl/param_build.h>
#include <openssl/rsa.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace platform {

namespace {

template <class T, void (*release)(T*)>
struct Releaser {
  void operator()(T* object) const { release(object); }
};
template <class T, void (*release)(T*)>
using Owned = std::unique_ptr<T, Releaser<T, release>>;

using OwnedKey = Owned<EVP_PKEY, EVP_PKEY_free>;
using OwnedKeyContext = Owned<EVP_PKEY_CTX, EVP_PKEY_CTX_free>;
using OwnedDigest = Owned<EVP_MD_CTX, EVP_MD_CTX_free>;
using OwnedNumber = Owned<BIGNUM, BN_clear_free>;
using OwnedParameters = Owned<OSSL_PARAM, OSSL_PARAM_free>;
using OwnedBuilder = Owned<OSSL_PARAM_BLD, OSSL_PARAM_BLD_free>;

enum class BlobType : uint8_t { publicKey = 6, privateKey = 7 };

constexpr size_t headerSize = 20;
constexpr uint8_t version = 2;
constexpr uint32_t signatureAlgorithm = 0x2400;

constexpr const char* magicOf(BlobType type) { return type == BlobType::privateKey ? "RSA2" : "RSA1"; }

/// A number behind the header, and how many halves of the modulus's length it takes.
struct Field {
  const char* name;
  size_t halves;
};
constexpr Field fields[] = {
    {OSSL_PKEY_PARAM_RSA_N, 2},         {OSSL_PKEY_PARAM_RSA_FACTOR1, 1},
    {OSSL_PKEY_PARAM_RSA_FACTOR2, 1},   {OSSL_PKEY_PARAM_RSA_EXPONENT1, 1},
    {OSSL_PKEY_PARAM_RSA_EXPONENT2, 1}, {OSSL_PKEY_PARAM_RSA_COEFFICIENT1, 1},
    {OSSL_PKEY_PARAM_RSA_D, 2},
};

size_t fieldCount(BlobType type) { return type == BlobType::privateKey ? std::size(fields) : 1; }

void appendNumber(Bytes& blob, uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) blob.push_back(static_cast<uint8_t>(value >> shift));
}

uint32_t numberAt(const Bytes& blob, size_t at) {
  uint32_t value = 0;
  for (size_t i = 4; i-- > 0;) value = value << 8 | blob[at + i];
  return value;
}

OwnedNumber numberOfKey(const EVP_PKEY* key, const char* name) {
  BIGNUM* number = nullptr;
  EVP_PKEY_get_bn_param(key, name, &number);
  return OwnedNumber(number);
}

std::optional<Bytes> blobOf(const EVP_PKEY* key, BlobType type) {
  const auto bits = static_cast<uint32_t>(EVP_PKEY_get_bits(key));
  const OwnedNumber exponent = numberOfKey(key, OSSL_PKEY_PARAM_RSA_E);
  if (!exponent || BN_num_bits(exponent.get()) > 32) return std::nullopt;
  Bytes blob = {static_cast<uint8_t>(type), version, 0, 0};
  appendNumber(blob, signatureAlgorithm);
  blob.insert(blob.end(), magicOf(type), magicOf(type) + 4);
  appendNumber(blob, bits);
  appendNumber(blob, static_cast<uint32_t>(BN_get_word(exponent.get())));
  const size_t half = (bits + 15) / 16;
  for (size_t i = 0; i < fieldCount(type); ++i) {
    const OwnedNumber number = numberOfKey(key, fields[i].name);
    const size_t length = half * fields[i].halves;
    blob.resize(blob.size() + length);
    if (!number || BN_bn2lebinpad(number.get(), &blob[blob.size() - length], static_cast<int>(length)) < 0)
      return std::nullopt;
  }
  return blob;
}

// The header of a blob, checked against its length.
std::optional<BlobType> typeOfBlob(const Bytes& blob) {
  if (blob.size() < headerSize) return std::nullopt;
  const auto type = static_cast<BlobType>(blob[0]);
  if (type != BlobType::privateKey && type != BlobType::publicKey) return std::nullopt;
  const uint32_t bits = numberAt(blob, 12);
  if (blob[1] != version || numberAt(blob, 4) != signatureAlgorithm ||
      std::memcmp(&blob[8], magicOf(type), 4) != 0 || bits < 16 || bits > SigningKey::mostBits ||
      bits % 16 != 0)
    return std::nullopt;
  size_t length = headerSize;
  for (size_t i = 0; i < fieldCount(type); ++i) length += fields[i].halves * (bits / 16);
  if (blob.size() < length) return std::nullopt;
  return type;
}

OwnedKey keyOfParameters(const OSSL_PARAM_BLD* builder, OSSL_PARAM* parameters, BlobType type) {
  const OwnedKeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, "RSA", nullptr));
  const int selection = type == BlobType::privateKey ? EVP_PKEY_KEYPAIR : EVP_PKEY_PUBLIC_KEY;
  EVP_PKEY* key = nullptr;
  if (!builder || !parameters || !context || EVP_PKEY_fromdata_init(context.get()) <= 0 ||
      EVP_PKEY_fromdata(context.get(), &key, selection, parameters) <= 0)
    return {};
  return OwnedKey(key);
}

bool isConsistent(EVP_PKEY* key, BlobType type, uint32_t bits) {
  if (EVP_PKEY_get_bits(key) != static_cast<int>(bits)) return false;
  const OwnedKeyContext context(EVP_PKEY_CTX_new_from_pkey(nullptr, key, nullptr));
  if (!context) return false;
  // The full check of a public key refuses short ones, which are lawful here.
  return type == BlobType::publicKey || EVP_PKEY_pairwise_check(context.get()) == 1;
}

OwnedKey keyOfBlob(const Bytes& blob, BlobType type) {
  const OwnedBuilder builder(OSSL_PARAM_BLD_new());
  if (!builder) return {};
  const size_t half = numberAt(blob, 12) / 16;
  std::array<OwnedNumber, std::size(fields)> numbers;
  size_t at = headerSize;
  for (size_t i = 0; i < fieldCount(type); ++i) {
    const size_t length = half * fields[i].halves;
    numbers[i].reset(BN_lebin2bn(&blob[at], static_cast<int>(length), nullptr));
    if (!numbers[i] || BN_is_zero(numbers[i].get()) ||
        !OSSL_PARAM_BLD_push_BN(builder.get(), fields[i].name, numbers[i].get()))
      return {};
    at += length;
  }
  const OwnedNumber exponent(BN_new());
  if (!exponent || !BN_set_word(exponent.get(), numberAt(blob, 16)) ||
      !OSSL_PARAM_BLD_push_BN(builder.get(), OSSL_PKEY_PARAM_RSA_E, exponent.get()))
    return {};
  const OwnedParameters parameters(OSSL_PARAM_BLD_to_param(builder.get()));
  OwnedKey key = keyOfParameters(builder.get(), parameters.get(), type);
  return key && isConsistent(key.get(), type, numberAt(blob, 12)) ? std::move(key) : OwnedKey();
}

}  // namespace

struct SigningKey::Key {
  OwnedKey key;
  bool isPrivate;
};

SigningKey::SigningKey(std::unique_ptr<Key> key) : key_(std::move(key)) {}
SigningKey::SigningKey(SigningKey&&) noexcept = default;
SigningKey& SigningKey::operator=(SigningKey&&) noexcept = default;
SigningKey::~SigningKey() = default;

std::optional<SigningKey> SigningKey::generate(unsigned bits) {
  OwnedKey key(EVP_RSA_gen(bits));
  if (!key) return std::nullopt;
  return SigningKey(std::make_unique<Key>(Key{std::move(key), true}));
}

std::optional<SigningKey> SigningKey::fromBlob(const Bytes& blob) {
  const std::optional<BlobType> type = typeOfBlob(blob);
  if (!type) return std::nullopt;
  OwnedKey key = keyOfBlob(blob, *type);
  if (!key) return std::nullopt;
  return SigningKey(std::make_unique<Key>(Key{std::move(key), *type == BlobType::privateKey}));
}

std::optional<Bytes> SigningKey::privateBlob() const {
  if (!key_->isPrivate) return std::nullopt;
  return blobOf(key_->key.get(), BlobType::privateKey);
}

std::optional<Bytes> SigningKey::publicBlob() const { return blobOf(key_->key.get(), BlobType::publicKey); }

std::optional<Bytes> SigningKey::sign(const Bytes& message) const {
  const OwnedDigest context(EVP_MD_CTX_new());
  size_t length = 0;
  if (!key_->isPrivate || !context ||
      EVP_DigestSignInit(context.get(), nullptr, EVP_md5(), nullptr, key_->key.get()) <= 0 ||
      EVP_DigestSign(context.get(), nullptr, &length, message.data(), message.size()) <= 0)
    return std::nullopt;
  Bytes signature(length);
  if (EVP_DigestSign(context.get(), signature.data(), &length, message.data(), message.size()) <= 0)
    return std::nullopt;
  signature.resize(length);
  std::reverse(signature.begin(), signature.end());
  return signature;
}

bool SigningKey::verify(const Bytes& message, const Bytes& signature) const {
  const OwnedDigest context(EVP_MD_CTX_new());
  const Bytes highestFirst(signature.rbegin(), signature.rend());
  return context && EVP_DigestVerifyInit(context.get(), nullptr, EVP_md5(), nullptr, key_->key.get()) > 0 &&
         EVP_DigestVerify(context.get(), highestFirst.data(), highestFirst.size(), message.data(),
                          message.size()) == 1;
}

}  // namespace platform
