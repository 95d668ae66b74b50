#pragma once

#include <QByteArrayView>
#include <QString>

// Ed25519 signatures of release files (libsodium). Keys and signatures travel as base64 text:
// 32 key bytes, 64 signature bytes, exactly what `openssl pkeyutl -rawin` makes for an ed25519 key.
class ReleaseSignature {
public:
    // Whether `signature` is a valid signature of `data` under `publicKey`; malformed text is false.
    static bool verify(QByteArrayView data, const QString& signature, const QString& publicKey);
    // The same over a whole file. The file is mapped, not read, so a large download costs no heap.
    static bool verifyFile(const QString& fileName, const QString& signature, const QString& publicKey);
};
