#include "ui/QtDialogs.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

// The real message box: its buttons, the one Enter presses, and the answer each button gives.
class tst_QtDialogs : public QObject {
    Q_OBJECT

    // Runs `inspect` on the open message box, then presses the button with `pressText`.
    static void whileOpen(const std::function<void(QMessageBox*)>& inspect, const QString& pressText) {
        QTimer::singleShot(0, [inspect, pressText] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            inspect(box);
            for (QAbstractButton* b : box->buttons())
                if (b->text().remove(QLatin1Char('&')) == pressText)
                    b->click();
        });
    }

private slots:
    void buttonsDefaultAndAnswer_data() {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<QString>("expectedDefault");
        QTest::addColumn<QString>("press");
        QTest::addColumn<int>("answer");
        using B = Dialogs::Buttons;
        using A = Dialogs::Answer;
        QTest::newRow("ok") << int(B::Ok) << 1 << QStringLiteral("OK") << QStringLiteral("OK") << int(A::Ok);
        QTest::newRow("yes/no, first")
            << int(B::YesNo) << 1 << QStringLiteral("Yes") << QStringLiteral("No") << int(A::No);
        QTest::newRow("yes/no, second")
            << int(B::YesNo) << 2 << QStringLiteral("No") << QStringLiteral("Yes") << int(A::Yes);
        QTest::newRow("yes/no/cancel, third") << int(B::YesNoCancel) << 3 << QStringLiteral("Cancel")
                                              << QStringLiteral("Cancel") << int(A::Cancel);
        QTest::newRow("ok/cancel, out of range keeps Qt's")
            << int(B::OkCancel) << 7 << QStringLiteral("") << QStringLiteral("OK") << int(A::Ok);
    }
    void buttonsDefaultAndAnswer() {
        QFETCH(int, buttons);
        QFETCH(int, defaultButton);
        QFETCH(QString, expectedDefault);
        QFETCH(QString, press);
        QFETCH(int, answer);
        QtDialogs dialogs(nullptr);
        QString seenDefault = QStringLiteral("?");
        QString seenTitle;
        whileOpen(
            [&](QMessageBox* box) {
                seenTitle = box->windowTitle();
                if (!expectedDefault.isEmpty())
                    seenDefault = box->defaultButton() ? box->defaultButton()->text().remove(QLatin1Char('&'))
                                                       : QString();
            },
            press);
        const auto result = dialogs.message(QStringLiteral("Frage"), QString(), Dialogs::Buttons(buttons),
                                            Dialogs::Icon::Question, defaultButton);
        QCOMPARE(int(result), answer);
        QCOMPARE(seenTitle, Dialogs::defaultTitle());
        if (!expectedDefault.isEmpty())
            QCOMPARE(seenDefault, expectedDefault);
    }
};

QTEST_MAIN(tst_QtDialogs)
#include "tst_QtDialogs.moc"
