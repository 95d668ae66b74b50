#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <sodium.h>

// A release key pair made for one test, and version lists signed with it in the form
// scripts/sign-release.sh writes.
class ReleaseSigner {
public:
    ReleaseSigner() {
        if (sodium_init() < 0)
            qFatal("libsodium cannot start");
        crypto_sign_keypair(m_public, m_secret);
    }

    QString publicKey() const {
        return QString::fromLatin1(
            QByteArray(reinterpret_cast<const char*>(m_public), sizeof m_public).toBase64());
    }
    QByteArray sign(const QByteArray& data) const {
        unsigned char sig[crypto_sign_BYTES];
        crypto_sign_detached(sig, nullptr, reinterpret_cast<const unsigned char*>(data.constData()),
                             static_cast<unsigned long long>(data.size()), m_secret);
        return QByteArray(reinterpret_cast<const char*>(sig), sizeof sig).toBase64();
    }
    QByteArray fileLine(const QString& name, const QByteArray& content) const {
        return "File: " + name.toLatin1() + ' ' + QByteArray::number(content.size()) + ' ' + sign(content) +
               "\r\n";
    }
    QByteArray versionList(const QByteArray& player, const QByteArray& updater,
                           const QByteArray& furtherLines = {}) const {
        const QByteArray body =
            "TavoMP3Player: " + player + "\r\nTavoMP3Update: " + updater + "\r\n" + furtherLines;
        return body + "Signature: " + sign(body) + "\r\n";
    }
    QByteArray versionList(const QByteArray& player, const QByteArray& updater,
                           const QList<QPair<QString, QByteArray>>& files) const {
        QByteArray lines;
        for (const auto& [name, content] : files)
            lines += fileLine(name, content);
        return versionList(player, updater, lines);
    }

private:
    unsigned char m_public[crypto_sign_PUBLICKEYBYTES];
    unsigned char m_secret[crypto_sign_SECRETKEYBYTES];
};
