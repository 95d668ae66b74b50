#include "app/GuardedApplication.h"
#include "app/TavoMP3PlayerMain.h"
#include "base/AppGlobals.h"
#include "base/Clock.h"
#include "base/CommandLine.h"
#include "base/ErrorReport.h"
#include "base/RandomSource.h"
#include "base/RuntimeError.h"
#include "base/RegistrySettingsStore.h"
#include "base/SettingsStore.h"
#include "base/StatusLine.h"
#include "desktop/SingleInstance.h"
#include "playlist/SongIdentities.h"
#include "power/SystemPowerOff.h"
#include "program/ProgramCore.h"
#include "ui/QtDialogs.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTimer>
#include <QTranslator>
#include <cstdio>
#include <memory>

// The platform's player and desktop links: window messages on Windows; mpv and D-Bus elsewhere.
#ifdef Q_OS_WIN
#include "player/WinampLink.h"
using PlatformPlayerLink = WinampLink;
#else
#include "desktop/MprisPlayerAdaptor.h"
#include "player/MpvLink.h"
using PlatformPlayerLink = MpvLink;
#endif

// Qt's own texts (message-box buttons, file dialogs) in German, like the rest of the program.
static void installGermanTranslations(QApplication& app) {
    QStringList folders{QLibraryInfo::path(QLibraryInfo::TranslationsPath),
                        QStringLiteral("/usr/share/qt6/translations")};
#ifdef Q_OS_WIN
    // The Windows installer puts them beside the program.
    folders.prepend(QCoreApplication::applicationDirPath() + QStringLiteral("/translations"));
#endif
    for (const char* name : {"qtbase_de", "qt_de"}) {
        auto* translator = new QTranslator(&app);
        bool loaded = false;
        for (const QString& folder : folders)
            loaded = loaded || translator->load(QLatin1String(name), folder);
        if (loaded)
            QApplication::installTranslator(translator);
        else
            delete translator;
    }
}

int main(int argc, char* argv[]) {
    GuardedApplication app(argc, argv);
    QApplication::setApplicationName(SettingsStore::applicationName());
    // The installed .desktop file: the desktop matches our windows to its name and icon.
    QGuiApplication::setDesktopFileName(QStringLiteral("example.tavomp3.player"));
    installGermanTranslations(app);

#ifdef Q_OS_WIN
    RegistrySettingsStore settings; // where existing installations keep their settings
#else
    IniSettingsStore settings;
#endif
    QtDialogs dialogs;
    SystemClock clock;
    SeededRandom random(SeededRandom::clockSeed());
    StatusLine status;
    SystemPowerOff power;
    app.setDialogs(&dialogs);
    PlatformPlayerLink player(status, dialogs);
    SongIdentities identities(SongIdentities::defaultCacheFile(), &status);
    Services services{settings, dialogs, clock, random, status, Paths::nativeStyle(), &power, &player};
    services.songIdentities = &identities;
    SingleInstance instance(SingleInstance::sessionBus(), SingleInstance::defaultSocketPath());

    int line = 1;
    std::unique_ptr<ProgramCore> core;
    std::unique_ptr<TavoMP3PlayerMain> window;
    try {
        line = 2;
        AppGlobals::StartUpdaterOnExit = false;
        line = 3;
        AppGlobals::UpdaterPath =
            AppGlobals::programFolder() + QDir::separator() + AppGlobals::updaterFileName();
        line = 4;
        const CommandLine cmd = CommandLine::parse(CommandLine::join(app.arguments().mid(1)));
        line = 6;
        AppGlobals::PlayOnStart = cmd.playOnStart;
        line = 7;
        // A second start hands its words to the running program instead of sharing its player.
        if (!instance.claim(cmd.showWindow, cmd.playOnStart)) {
            std::fputs("TavoMP3Player läuft schon: der Aufruf wurde an das laufende Programm übergeben.\n",
                       stderr);
            return 0;
        }
        core = std::make_unique<ProgramCore>(services);
        window = std::make_unique<TavoMP3PlayerMain>(*core);
        TavoMP3PlayerMain* view = window.get();
        // A later start: line 1 brings the window to the front, line 2 is the "play" word.
        QObject::connect(&instance, &SingleInstance::activationRequested, view,
                         [&dialogs, &program = *core, view](bool show, bool play) {
                             ErrorReport::guard(dialogs, QStringLiteral("Activate"), [&](int& step) {
                                 step = 1;
                                 if (show)
                                     view->restoreFromDesktop();
                                 step = 2;
                                 if (play)
                                     program.requestPlayMode();
                             });
                         });
        // Asked for by the desktop's player controls; answered after the bus has had its answer.
        WindowRequests& requests = core->windowRequests();
        QObject::connect(
            &requests, &WindowRequests::raiseRequested, view,
            [&dialogs, view] {
                ErrorReport::guard(dialogs, QStringLiteral("Activate"), [view](int& step) {
                    step = 1;
                    view->restoreFromDesktop();
                });
            },
            Qt::QueuedConnection);
        QObject::connect(&requests, &WindowRequests::closeRequested, view, &QWidget::close,
                         Qt::QueuedConnection);
#ifndef Q_OS_WIN
        // Before the load, so that the desktop hears of every song from the first one on.
        if (instance.ownsBusName())
            MprisPlayerAdaptor::publish(core.get(), core->playback(), core->playlists(), services, requests,
                                        QDBusConnection::sessionBus());
#endif
        dialogs.setParent(window.get());
        window->load();
        window->showAfterStart(cmd.showWindow);
        if (!instance.busNameProblem().isEmpty())
            QTimer::singleShot(0, window.get(), [&dialogs, &instance] {
                dialogs.message(instance.busNameProblem(), QString(), Dialogs::Buttons::Ok,
                                Dialogs::Icon::Exclamation);
            });
    } catch (const RuntimeError& e) {
        dialogs.message(ErrorReport::text(QStringLiteral("Submain"), line, e.description()));
        if (!window)
            return 0;
    }
    return app.exec();
}
