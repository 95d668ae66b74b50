#include "update/ReleaseSignature.h"

#include <QByteArray>
#include <QFile>
#include <sodium.h>

namespace {
QByteArray decoded(const QString& base64, qsizetype size) {
    auto result =
        QByteArray::fromBase64Encoding(base64.trimmed().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    return result && result.decoded.size() == size ? result.decoded : QByteArray();
}
} // namespace

bool ReleaseSignature::verify(QByteArrayView data, const QString& signature, const QString& publicKey) {
    if (sodium_init() < 0)
        return false;
    const QByteArray key = decoded(publicKey, crypto_sign_PUBLICKEYBYTES);
    const QByteArray sig = decoded(signature, crypto_sign_BYTES);
    if (key.isEmpty() || sig.isEmpty())
        return false;
    return crypto_sign_verify_detached(reinterpret_cast<const unsigned char*>(sig.constData()),
                                       reinterpret_cast<const unsigned char*>(data.data()),
                                       static_cast<unsigned long long>(data.size()),
                                       reinterpret_cast<const unsigned char*>(key.constData())) == 0;
}

bool ReleaseSignature::verifyFile(const QString& fileName, const QString& signature,
                                  const QString& publicKey) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    if (file.size() == 0)
        return verify(QByteArrayView(), signature, publicKey);
    const uchar* bytes = file.map(0, file.size());
    if (!bytes)
        return false;
    const bool valid = verify(QByteArrayView(bytes, file.size()), signature, publicKey);
    file.unmap(const_cast<uchar*>(bytes));
    return valid;
}
