#pragma once

#include "base/SettingsStore.h"

#include <QTemporaryDir>

struct TempFolderHolder {
    QTemporaryDir tempFolder;
};

// The real INI store on a file in a fresh temporary folder (removed with the object).
// The folder is a base listed first so that it exists before the store opens its file.
class TempSettings : private TempFolderHolder, public IniSettingsStore {
public:
    TempSettings()
        : TempFolderHolder(), IniSettingsStore(tempFolder.filePath(QStringLiteral("TavoMP3Player.ini"))) {}
    QString folder() const { return tempFolder.path(); }
};
