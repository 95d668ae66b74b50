#include "power/ShutdownModule.h"

#include <QtTest>

using namespace ShutdownModule;

class tst_ShutdownModule : public QObject {
    Q_OBJECT
private slots:
    void flagsForEverySystemAndMode_data() {
        QTest::addColumn<quint32>("platformId");
        QTest::addColumn<quint32>("major");
        QTest::addColumn<qint32>("mode");
        QTest::addColumn<quint32>("flags");
        QTest::addColumn<bool>("privilege");
        // Expected flags per system for modes 0, 1, 2 and an unknown 7.
        const struct {
            const char* name;
            quint32 platform, major, flags[4];
        } systems[] = {{"9x", 1, 4, {1, 5, 5, 1}},     {"9x with a high major", 1, 5, {1, 5, 5, 1}},
                       {"NT 3", 2, 3, {9, 13, 13, 9}}, {"NT 4", 2, 4, {9, 13, 13, 9}},
                       {"2000", 2, 5, {9, 13, 25, 9}}, {"10", 2, 10, {9, 13, 25, 9}}};
        const qint32 modes[] = {0, 1, 2, 7};
        for (const auto& s : systems)
            for (int m = 0; m < 4; ++m)
                QTest::addRow("%s mode %d", s.name, modes[m])
                    << s.platform << s.major << modes[m] << s.flags[m] << (s.platform == 2);
    }
    void flagsForEverySystemAndMode() {
        QFETCH(quint32, platformId);
        QFETCH(quint32, major);
        QFETCH(qint32, mode);
        QFETCH(quint32, flags);
        QFETCH(bool, privilege);
        const ShutdownPlan plan = planShutdown({platformId, major}, mode);
        QCOMPARE(plan.flags, flags);
        QCOMPARE(plan.enablePrivilege, privilege);
        QVERIFY(!plan.killShell); // the shell is never terminated, whatever the system
    }
};

QTEST_GUILESS_MAIN(tst_ShutdownModule)
#include "tst_ShutdownModule.moc"
