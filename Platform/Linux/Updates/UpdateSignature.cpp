#include "Platform/Linux/Updates/UpdateSignature.h"

#include <sodium.h>

#include <QtCore/QFile>

namespace zephyx {

static_assert(publicKeySize == crypto_sign_PUBLICKEYBYTES);
static_assert(signatureSize == crypto_sign_BYTES);

namespace {

const unsigned char* data(const QByteArray& bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.constData());
}

}  // namespace

bool isSignedBy(const QByteArray& publicKey, const QByteArray& signature, const QString& path) {
  if (publicKey.size() != publicKeySize || signature.size() != signatureSize) return false;
  if (sodium_init() < 0) return false;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() == 0) return false;
  // The signature is over the file itself, not over a digest that could be made piece by piece.
  const auto* contents = file.map(0, file.size());
  return contents && crypto_sign_verify_detached(data(signature), contents,
                                                 static_cast<unsigned long long>(file.size()),
                                                 data(publicKey)) == 0;
}

}  // namespace zephyx
