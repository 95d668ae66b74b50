#pragma once

#include "app/Binding.h"

#include <QList>
#include <QPointer>
#include <functional>

class SettingsApplier;
class TavoMP3About;
class TavoMP3ID3;
class TavoMP3News;
class TavoMP3QuickSearch;
class TavoMP3Settings;
class TavoMP3Update;
class WindowSkins;

// The windows the main window opens: settings, update, news, about, ID3 and the quick search. Each
// is created unshown on first use, so that the colour scheme reaches it before it is shown; the ones
// that share the scheme are listed for the colour roles. Also the update schedule's minute counter.
class SecondaryWindows : public Binding {
    Q_OBJECT
public:
    SecondaryWindows(ProgramCore& core, MainWindowUi& ui, QMainWindow& window, SettingsApplier& applier,
                     WindowSkins& skins);

    // The settings window, created unshown when it does not exist yet.
    TavoMP3Settings* settingsWindow();
    // Opens it, with a hint in its status line.
    TavoMP3Settings* showSettingsWindow(const QString& hint = QString());
    TavoMP3Update& updateWindow();
    TavoMP3News& newsWindow();
    TavoMP3About& aboutWindow();
    TavoMP3ID3& id3Window();
    // There is one quick search: the typed character goes into the open one, or opens it.
    TavoMP3QuickSearch* openQuickSearch(const QString& typed);
    TavoMP3QuickSearch* quickSearch() const;

    // Windows that share the scheme register a function that creates them (unshown) when needed.
    void addSchemeWindow(std::function<QWidget*()> ensureWindow);
    // Every registered window, created where it did not exist yet.
    QList<QWidget*> schemeWindows();

signals:
    // The quick search that opened takes what is typed in the list from now on.
    void quickSearchOpened(QWidget* textField);

private:
    void connectMenus();
    void MenuPlaylistID3Click();

    SettingsApplier& m_applier;
    WindowSkins& m_skins;
    QPointer<TavoMP3Settings> m_settingsWindow;
    QPointer<TavoMP3Update> m_updateWindow;
    QPointer<TavoMP3News> m_newsWindow;
    QPointer<TavoMP3About> m_aboutWindow;
    QPointer<TavoMP3ID3> m_id3Window;
    QPointer<TavoMP3QuickSearch> m_quickSearch;
    QList<std::function<QWidget*()>> m_schemeWindows;
};
