#include "app/TavoMP3PlayerMain.h"
#include "playlist/widgets/TavoMP3Playlist2.h"
#include "playlist/widgets/TavoMP3QuickSearch.h"
#include "support/TestServices.h"
#include "ui/AutomationIds.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3ID3.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoMp3Tree.h"
#include "update/widgets/TavoMP3About.h"
#include "update/widgets/TavoMP3News.h"
#include "update/widgets/TavoMP3Update.h"

#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QRegularExpression>
#include <QtTest>

class tst_AutomationIds : public QObject {
    Q_OBJECT

    // Each window the way a user reaches it; the ones made on first use are built here.
    static QWidget* window(TavoMP3PlayerMain& w, const QString& which) {
        if (which == QLatin1String("main"))
            return &w;
        if (which == QLatin1String("settings"))
            return w.settingsWindow();
        if (which == QLatin1String("folder tree")) {
            w.settingsWindow()->BAddDir->click();
            return w.settingsWindow()->findChild<TavoMp3Tree*>();
        }
        if (which == QLatin1String("quick search"))
            return w.openQuickSearch(QStringLiteral("A"));
        if (which == QLatin1String("update"))
            return &w.updateWindow();
        if (which == QLatin1String("news"))
            return &w.newsWindow();
        if (which == QLatin1String("about"))
            return &w.aboutWindow();
        if (which == QLatin1String("ID3"))
            return &w.id3Window();
        if (which == QLatin1String("playlist 2"))
            return w.Playlist2;
        return nullptr;
    }

private slots:
    void everyWindowTellsItsDesignNames_data() {
        QTest::addColumn<QString>("which");
        QTest::addColumn<bool>("automation");
        for (const char* which : {"main", "settings", "folder tree", "quick search", "update", "news",
                                  "about", "ID3", "playlist 2"}) {
            QTest::addRow("%s, design names on", which) << QString::fromLatin1(which) << true;
            QTest::addRow("%s, off", which) << QString::fromLatin1(which) << false;
        }
    }
    // A window that forgets to apply the names hides all its controls from desktop scripts, and a
    // name spelt any other way than Name or Name(index) is not found by them either.
    void everyWindowTellsItsDesignNames() {
        QFETCH(QString, which);
        QFETCH(bool, automation);
        if (automation)
            qputenv(AutomationIds::kVariable, "1");
        else
            qunsetenv(AutomationIds::kVariable);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        QWidget* top = window(w, which);
        QVERIFY(top);
        static const QRegularExpression designName(QStringLiteral("^[A-Za-z][A-Za-z0-9_]*(\\([0-9]+\\))?$"));
        QStringList wrong;
        int named = 0;
        QList<QWidget*> controls = top->findChildren<QWidget*>();
        controls.prepend(top);
        for (QWidget* control : controls) {
            const QString name = control->objectName();
            if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
                continue;
            ++named;
            if (!designName.match(name).hasMatch())
                wrong << QStringLiteral("badly formed: ") + name;
            const QString expected = automation ? name : QString();
            if (control->accessibleDescription() != expected)
                wrong << name + QStringLiteral(" described as \"") + control->accessibleDescription() +
                             QLatin1Char('"');
        }
        qunsetenv(AutomationIds::kVariable);
        QVERIFY2(named > 1, qPrintable(which + QStringLiteral(" has no named controls")));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QStringLiteral("; "))));
    }

    void designNamesOnlyWhenAsked_data() {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("describes");
        QTest::newRow("unset") << QByteArray() << false;
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("yes is not 1") << QByteArray("yes") << false;
    }
    void designNamesOnlyWhenAsked() {
        QFETCH(QByteArray, value);
        QFETCH(bool, describes);
        if (value.isNull())
            qunsetenv(AutomationIds::kVariable);
        else
            qputenv(AutomationIds::kVariable, value);
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        for (QWidget* control :
             std::initializer_list<QWidget*>{w.FStatus, w.FPlaylist, w.BPLOpen, w.FSleepmode}) {
            QCOMPARE(control->accessibleDescription(), describes ? control->objectName() : QString());
            QVERIFY(!control->objectName().isEmpty());
        }
        // Qt's internal helpers never carry a design name.
        for (QWidget* child : w.findChildren<QWidget*>())
            if (child->objectName().startsWith(QLatin1String("qt_")))
                QCOMPARE(child->accessibleDescription(), QString());
        qunsetenv(AutomationIds::kVariable);
    }

    // Controls without a caption still need a name a screen reader can speak.
    void captionlessControlsHaveNames() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        QCOMPARE(w.FPlaylist->accessibleName(), QStringLiteral("Playliste 1"));
        QVERIFY(!w.FSleepmode->accessibleName().isEmpty());
    }
};

QTEST_MAIN(tst_AutomationIds)
#include "tst_AutomationIds.moc"
