#include "platform/crypto/signing.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

const Bytes message = {'h', 'e', 'l', 'l', 'o'};

TEST(Signing, BlobsHaveTheProvidersLayout) {
  const auto key = SigningKey::generate();
  ASSERT_TRUE(key);
  const auto secret = key->privateBlob(), open = key->publicBlob();
  ASSERT_EQ(secret->size(), 596u);
  ASSERT_EQ(open->size(), 148u);
  const Bytes secretStart = {7, 2, 0, 0, 0, 0x24, 0, 0, 'R', 'S', 'A', '2', 0, 4, 0, 0, 1, 0, 1, 0};
  const Bytes openStart = {6, 2, 0, 0, 0, 0x24, 0, 0, 'R', 'S', 'A', '1', 0, 4, 0, 0, 1, 0, 1, 0};
  EXPECT_TRUE(std::equal(secretStart.begin(), secretStart.end(), secret->begin()));
  EXPECT_TRUE(std::equal(openStart.begin(), openStart.end(), open->begin()));

  const auto again = SigningKey::fromBlob(*secret);
  ASSERT_TRUE(again);
  const auto signature = again->sign(message);
  ASSERT_EQ(signature->size(), 128u);
  const auto verifier = SigningKey::fromBlob(*open);
  ASSERT_TRUE(verifier);
  EXPECT_FALSE(verifier->privateBlob());
  EXPECT_TRUE(verifier->verify(message, *signature));
  EXPECT_FALSE(verifier->verify({'H'}, *signature));
}

TEST(Signing, RefusesKeysThatAreNone) {
  const Bytes good = *SigningKey::generate()->privateBlob();
  EXPECT_FALSE(SigningKey::fromBlob({}));
  for (const size_t length : {1u, 19u, 20u, 148u, 595u})
    EXPECT_FALSE(SigningKey::fromBlob(Bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(length))))
        << length;
  for (const size_t place : {0u, 1u, 5u, 8u, 13u, 14u, 15u, 30u, 160u, 590u}) {
    Bytes bad = good;
    bad[place] ^= 0x55;
    EXPECT_FALSE(SigningKey::fromBlob(bad)) << "byte " << place;
  }
}

TEST(Signing, AgreesWithTheCommandLineTool) {
  const TemporaryFolder folder;
  const auto key = SigningKey::generate();
  const Bytes blob = *key->privateBlob(), signature = *key->sign(message);
  folder.write("key.blob", {blob.begin(), blob.end()});
  folder.write("text", {message.begin(), message.end()});
  folder.write("ours", {signature.rbegin(), signature.rend()});
  const std::string commands = "cd '" + folder.path().native() +
                               "' && openssl rsa -inform MSBLOB -in key.blob -out key.pem 2>log &&"
                               " openssl dgst -md5 -sign key.pem -out theirs text 2>>log &&"
                               " openssl rsa -in key.pem -pubout -out open.pem 2>>log &&"
                               " openssl dgst -md5 -verify open.pem -signature ours text >>log 2>&1";
  ASSERT_EQ(std::system(commands.c_str()), 0) << folder.read("log");
  const std::string theirs = folder.read("theirs");
  EXPECT_TRUE(
      SigningKey::fromBlob(*key->publicBlob())->verify(message, Bytes(theirs.rbegin(), theirs.rend())));
}

}  // namespace
