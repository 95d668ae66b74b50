// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TavoMP3PlayerMain.h"
#include "playlist/widgets/PriorityFrame.h"
#include "support/MainWindowRig.h"
#include "ui/AccessibleFactory.h"
#include "ui/AutomationIds.h"
#include "ui/SkinControl.h"
#include "ui/TavoMP3Settings.h"
#include "ui/TavoSlider.h"
#include "ui/TavoxMiniDiagram.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QtTest>

// What screen readers and desktop scripts get from our windows and our own controls.
class tst_Accessibility : public QObject {
    Q_OBJECT

    static QAccessibleInterface* iface(QObject* o) { return QAccessible::queryAccessibleInterface(o); }

private slots:
    void initTestCase() { AccessibleFactory::install(); }
    void init() { qunsetenv(AutomationIds::kVariable); }

    void everyControlHasANameAndItsDesignName_data() {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<bool>("described");
        QTest::newRow("design names on") << QByteArray("1") << true;
        QTest::newRow("unset") << QByteArray() << false;
        QTest::newRow("yes is not 1") << QByteArray("yes") << false;
    }
    // Anything that takes the keyboard focus can be operated, so it must have a name to speak; a
    // window that forgets the design names hides its controls from desktop scripts, and a name
    // spelt other than Name or Name(index) is not found by them either.
    void everyControlHasANameAndItsDesignName() {
        QFETCH(QByteArray, variable);
        QFETCH(bool, described);
        if (!variable.isNull())
            qputenv(AutomationIds::kVariable, variable);
        MainWindowRig r;
        r.w.windows().settingsWindow()->BAddDir->click(); // the folder tree
        r.w.windows().newsWindow();
        r.w.windows().aboutWindow();
        r.w.windows().id3Window();
        r.w.windows().updateWindow();
        r.w.windows().openQuickSearch("A");
        static const QRegularExpression designName("^[A-Za-z][A-Za-z0-9_]*(\\([0-9]+\\))?$");
        QStringList wrong;
        int named = 0;
        // The secondary windows are children of the main window.
        QList<QWidget*> controls = r.w.findChildren<QWidget*>();
        controls.prepend(&r.w);
        for (QWidget* w : controls) {
            const QString name = w->objectName();
            // A label's name is its text, whatever it shows at the moment.
            QAccessibleInterface* a = iface(w);
            if (w->focusPolicy() != Qt::NoFocus && !name.startsWith(QLatin1String("qt_")) && w->isEnabled() &&
                !qobject_cast<QLabel*>(w) && a && a->text(QAccessible::Name).trimmed().isEmpty())
                wrong << QLatin1String(w->metaObject()->className()) + " has no name";
            if (name.isEmpty())
                continue;
            const bool helper = name.startsWith(QLatin1String("qt_")); // Qt's own, never a design control
            named += helper ? 0 : 1;
            if (!helper && !designName.match(name).hasMatch())
                wrong << "badly formed: " + name;
            if (w->accessibleDescription() != (described && !helper ? name : QString()))
                wrong << name + " described as " + w->accessibleDescription();
        }
        QVERIFY(named > 100);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join("; ")));
        QCOMPARE(r.w.ui().PL[2]->accessibleDescription(), described ? "PL(2)" : QString());
        // The settings window's status line is read out with what it says, not as a fixed word.
        QCOMPARE(iface(r.w.windows().settingsWindow()->FStatus)->text(QAccessible::Name),
                 TavoMP3Settings::firstTimeMessage());
    }

    // Option buttons worked through the bus do what a click does, not only move the mark.
    void optionButtonsActAsAClick_data() {
        QTest::addColumn<QString>("action");
        QTest::newRow("press") << QAccessibleActionInterface::pressAction();
        QTest::newRow("toggle") << QAccessibleActionInterface::toggleAction();
    }
    void optionButtonsActAsAClick() {
        QFETCH(QString, action);
        MainWindowRig r;
        r.core.playlists().paths(1) = {"/m/Alpha.mp3:5", "/m/Beta.mp3:5"};
        r.core.playlists().FuncDisplayPlaylist(true, 1);
        r.core.playlists().list(1).selectOnly(1);
        QAccessibleInterface* prio = iface(r.w.ui().Frame1->FPrio[2]);
        prio->actionInterface()->doAction(action);
        QTRY_COMPARE(r.core.playlists().PlaylistPaths.at(1), "/m/Beta.mp3:2");
        QVERIFY(prio->state().checked);
        iface(r.w.ui().PL[2])->actionInterface()->doAction(action);
        QTRY_VERIFY(!r.core.playback().state().mainPlaylistActive);
    }

    void skinButtonNameAndPress_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("name");
        QTest::newRow("a real ampersand") << "Rock && Roll" << true << "Rock & Roll";
        QTest::newRow("disabled") << "&Weiter" << false << "Weiter";
    }
    // A disabled button must neither offer nor do Press, or a script clicks what a user cannot.
    void skinButtonNameAndPress() {
        QFETCH(QString, caption);
        QFETCH(bool, enabled);
        QFETCH(QString, name);
        SkinControl b(caption);
        b.setEnabled(enabled);
        QAccessibleInterface* a = iface(&b);
        QCOMPARE(a->text(QAccessible::Name), name);
        const QString press = QAccessibleActionInterface::pressAction();
        QCOMPARE(a->actionInterface()->actionNames().contains(press), enabled);
        QSignalSpy clicks(&b, &SkinControl::clicked);
        a->actionInterface()->doAction(press);
        QCoreApplication::processEvents();
        QCOMPARE(clicks.count(), enabled ? 1 : 0);
        QCOMPARE(a->state().disabled, !enabled);
    }

    void positionSliderHasValueAndRangeAndSeeks() {
        MainWindowRig r;
        r.w.ui().TavoSlider1->SetValue("SliderMax", 200);
        r.w.ui().TavoSlider1->SetValue("SliderValue", 50);
        QAccessibleValueInterface* v = iface(r.w.ui().TavoSlider1)->valueInterface();
        QVERIFY(v);
        QCOMPARE(
            (QList<int>{v->currentValue().toInt(), v->minimumValue().toInt(), v->maximumValue().toInt()}),
            (QList<int>{50, 0, 200}));
        v->setCurrentValue(120);
        v->setCurrentValue(500); // past the end: the last second
        QTest::keyClick(r.w.ui().TavoSlider1, Qt::Key_Right);
        QCOMPARE(r.player.calls.filter("JumpToTime"),
                 (QStringList{"JumpToTime 120000", "JumpToTime 200000", "JumpToTime 55000"}));
    }

    void miniDiagramDescribesItsBars() {
        TavoxMiniDiagram d;
        QAccessibleInterface* a = iface(&d);
        QCOMPARE(a->text(QAccessible::Description), "Noch kein Song gewählt");
        std::array<qint32, 16> counts{};
        counts[9] = 90;  // 128 kbps
        counts[10] = 10; // 160 kbps
        counts[15] = 7;  // the invalid class is not shown
        d.SetMiniDiagram(counts);
        QCOMPARE(a->text(QAccessible::Description), "160 kbps: 10 %, 128 kbps: 90 %");
    }
};

QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
