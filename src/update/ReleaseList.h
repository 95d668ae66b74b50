#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>

// The version list the update server publishes, as scripts/sign-release.sh writes it:
//
//   TavoMP3Player: <major.minor>
//   TavoMP3Update: <revision>
//   File: <name on the server> <size in bytes> <signature of the file>
//   ...
//   Signature: <signature of every byte before this line>
//
// Lines end in CR LF. Other lines before the signature are ignored, so later releases can add some.
class ReleaseList {
public:
    struct File {
        qint64 size = 0;
        QString signature;
    };

    // The list when it is one, signed with `publicKey`; otherwise nothing, and `why` says in German
    // what is wrong.
    static std::optional<ReleaseList> parse(const QByteArray& bytes, const QString& publicKey, QString& why);
    // The same for a file on disk (read only up to `maxBytes`).
    static std::optional<ReleaseList> read(const QString& fileName, const QString& publicKey, QString& why,
                                           qint64 maxBytes = MaxBytes);

    // Whether `fileName` is the complete file `name` of this release, signed with `publicKey`.
    bool verifyFile(const QString& name, const QString& fileName, const QString& publicKey,
                    QString& why) const;
    bool names(const QString& name) const { return files.contains(name); }

    static constexpr qint64 MaxBytes = 64 * 1024;

    QString playerVersion;
    QString updaterVersion;
    QHash<QString, File> files;
};
