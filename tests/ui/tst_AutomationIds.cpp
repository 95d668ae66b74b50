#include "app/TavoMP3PlayerMain.h"
#include "support/TestServices.h"
#include "ui/AutomationIds.h"
#include "ui/SkinControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QtTest>

class tst_AutomationIds : public QObject {
    Q_OBJECT
private slots:
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
