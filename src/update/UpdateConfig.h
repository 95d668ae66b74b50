#pragma once

#include <QString>

// Where the update comes from, who signs it and what it replaces. The program takes its own values
// from the build, the environment and its folder; tests point everything at a temporary folder, a
// local server and a key of their own.
struct UpdateConfig {
    QString server;         // host[:port] of the update server
    QString publicKey;      // base64 Ed25519 key that every version list and file must be signed with
    QString programFolder;  // without a trailing separator
    QString cacheFolder;    // where the version list goes when the program folder is not writable
    QString ownName;        // the player's file name without extension
    QString playerVersion;  // "<major>.<minor>"
    QString updaterVersion; // the revision number; the installed updater carries the player's revision
    QString updaterPath;    // the updater file beside the program

    // The update server's host: a name under the reserved .example domain, so that nothing is
    // fetched from anywhere until a real server is named in TAVOMP3_UPDATE_HOST (host[:port]).
    static QString defaultServer() { return QStringLiteral("updates.tavomp3.example"); }
    static QString serverFromEnvironment();
    // The release key built into the program (CMake cache variable TAVO_UPDATE_PUBLIC_KEY), or the
    // one named in TAVOMP3_UPDATE_PUBLIC_KEY.
    static QString publicKeyFromEnvironment();
    static UpdateConfig forThisProgram();

    // Whether this user can create files in `folder`: tried, because permission bits do not tell
    // the whole truth (read-only mounts, root, access lists).
    static bool folderWritable(const QString& folder);
    // The program folder when it is writable, else the cache folder (made when missing).
    QString updateFolder() const;

    QString versionListAddress() const;
    QString playerAddress() const;
    QString updaterAddress() const;
    QString localVersionList() const;
    QString ownPath() const;
    QString newPlayerFile() const;

    // The names of the program files on the update server, which the version list signs.
    static QString playerFileName();
    static QString updaterFileName();
    // The executable suffix of this platform: ".exe" on Windows, nothing elsewhere.
    static QString executableSuffix();
};
