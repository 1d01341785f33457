#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace zephyx {

inline constexpr qsizetype publicKeySize = 32;
inline constexpr qsizetype signatureSize = 64;

/// Whether the Ed25519 signature over the whole file is by the owner of the key. False also for a
/// file that cannot be read. Takes a second or so for a large file. Any thread.
bool isSignedBy(const QByteArray& publicKey, const QByteArray& signature, const QString& path);

}  // namespace zephyx
