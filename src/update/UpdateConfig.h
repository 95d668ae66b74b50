#pragma once

#include <QString>

// Where the update comes from and what it replaces. The program takes its own values from the
// build and its folder; tests point everything at a temporary folder and a local server.
struct UpdateConfig {
    QString server;         // host[:port] of the update server
    QString programFolder;  // without a trailing separator
    QString ownName;        // the player's file name without extension
    QString playerVersion;  // "<major>.<minor>"
    QString updaterVersion; // the revision number; the installed updater carries the player's revision
    QString updaterPath;    // the updater file beside the program

    // The update server's host: a name under the reserved .example domain, so that nothing is
    // fetched from anywhere until a real server is named in TAVOMP3_UPDATE_HOST (host[:port]).
    static QString defaultServer() { return QStringLiteral("updates.tavomp3.example"); }
    static QString serverFromEnvironment();
    static UpdateConfig forThisProgram();

    QString versionListAddress() const;
    QString playerAddress() const;
    QString updaterAddress() const;
    QString localVersionList() const;
    QString ownPath() const;
    QString newPlayerFile() const;

    // The executable suffix of this platform: ".exe" on Windows, nothing elsewhere.
    static QString executableSuffix();
};
