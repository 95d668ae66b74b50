#include "app/TavoMP3PlayerMain.h"
#include "app/TrayModule.h"
#include "support/TestServices.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

class tst_Tray : public QObject {
    Q_OBJECT
private slots:
    void songTipIsCutToTheTipField_data() {
        QTest::addColumn<int>("nameLength");
        QTest::addColumn<int>("tipLength");
        QTest::newRow("short") << 10 << 28;
        QTest::newRow("fits exactly") << 45 << 63;
        QTest::newRow("one too long") << 46 << 63;
        QTest::newRow("far too long") << 200 << 63;
        QTest::newRow("empty name") << 0 << 18;
    }
    void songTipIsCutToTheTipField() {
        QFETCH(int, nameLength);
        QFETCH(int, tipLength);
        const QString name(nameLength, QLatin1Char('x'));
        const QString tip = TrayModule::songTip(name);
        QCOMPARE(tip.size(), tipLength);
        QVERIFY(tip.startsWith(QStringLiteral("Tavo MP3 Player!: ")));
    }

    void trayMenuHasItsEntriesInOrder() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        QStringList captions;
        for (QAction* a : w.MenuPopupSys->actions())
            captions << a->text();
        QCOMPARE(captions,
                 (QStringList{QStringLiteral("&Open"), QStringLiteral("Shu&ffle"),
                              QStringLiteral("&Next          >>"), QStringLiteral("P&ause         ||"),
                              QStringLiteral("&Play            >"), QStringLiteral("&Stop            -"),
                              QStringLiteral("P&revious    <<"), QStringLiteral("Priorität &setzen"),
                              QStringLiteral("&Exit")}));
        QCOMPARE(w.MenuPopupSys->defaultAction(), w.MenuPopRestore);
        QStringList prio;
        for (QAction* a : w.MenuSetPrio)
            prio << a->text();
        QCOMPARE(prio, (QStringList{QStringLiteral("&5 = normal"), QStringLiteral("&4"), QStringLiteral("&3"),
                                    QStringLiteral("&2 = selten"), QStringLiteral("&1"),
                                    QStringLiteral("&0 = nie")}));
    }

    void iconLivesFromLoadToClose() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        QVERIFY(!w.tray().isAdded());
        w.load();
        QVERIFY(w.tray().isAdded());
        QCOMPARE(w.tray().tip(), QStringLiteral("Tavo MP3 Player!"));
        w.close();
        QVERIFY(!w.tray().isAdded());
    }

    // Notifications arrive as mouse-move coordinates: only these codes act.
    void notificationsRestoreTheWindow_data() {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<bool>("restores");
        QTest::newRow("left down") << 513 << 0 << true;
        QTest::newRow("left double") << 515 << 0 << true;
        QTest::newRow("left down, y ignored") << 513 << 7 << true;
        QTest::newRow("left up") << 514 << 0 << false;
        QTest::newRow("plain move") << 100 << 40 << false;
        QTest::newRow("right up off the icon row") << 517 << 3 << false;
    }
    void notificationsRestoreTheWindow() {
        QFETCH(int, x);
        QFETCH(int, y);
        QFETCH(bool, restores);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.tray().trayAvailable = [] { return true; };
        w.load();
        w.showMinimized();
        QTRY_VERIFY(!w.isVisible()); // minimized means: only the tray icon is left
        w.TrayNotification(x, y);
        QCOMPARE(w.isVisible(), restores);
        QVERIFY(!w.MenuPopupSys->isVisible());
        w.close();
    }

    // Hidden in the notification area only where there is one; else the window stays reachable.
    void hiddenOnlyWithANotificationArea_data() {
        QTest::addColumn<bool>("tray");
        QTest::addColumn<bool>("minimize"); // else: started with "start"
        QTest::addColumn<bool>("visible");
        QTest::newRow("start, with a tray") << true << false << false;
        QTest::newRow("start, without") << false << false << true;
        QTest::newRow("minimized, with a tray") << true << true << false;
        QTest::newRow("minimized, without") << false << true << true;
    }
    void hiddenOnlyWithANotificationArea() {
        QFETCH(bool, tray);
        QFETCH(bool, minimize);
        QFETCH(bool, visible);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.tray().trayAvailable = [tray] { return tray; };
        w.load();
        if (minimize) {
            w.showMinimized();
            QTest::qWait(20);
        } else {
            w.showAfterStart(false);
        }
        QCOMPARE(w.isVisible(), visible);
        w.close();
    }

    void rightButtonUpOpensTheMenu() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        w.TrayNotification(517, 0);
        QTRY_VERIFY(w.MenuPopupSys->isVisible());
        w.MenuPopupSys->hide();
        w.close();
    }

    void restoreEntryShowsTheWindow() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        w.hide();
        w.MenuPopRestore->trigger();
        QVERIFY(w.isVisible());
        w.close();
    }
};

QTEST_MAIN(tst_Tray)
#include "tst_Tray.moc"
