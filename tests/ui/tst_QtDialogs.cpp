// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "ui/QtDialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

// The real message box: its buttons, the one Enter presses, and the answer each button gives.
class tst_QtDialogs : public QObject {
    Q_OBJECT

private slots:
    // The caller names the default button (the one Enter presses); each button gives its answer.
    void buttonsDefaultAndAnswer_data() {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("defaultButton");
        QTest::addColumn<QString>("expectedDefault"); // "?" = Qt's own choice
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("press");
        using B = Dialogs::Buttons;
        using A = Dialogs::Answer;
        QTest::newRow("ok") << int(B::Ok) << 1 << "OK" << int(A::Ok) << "OK";
        QTest::newRow("yes/no, first") << int(B::YesNo) << 1 << "Yes" << int(A::No) << "No";
        QTest::newRow("yes/no, second") << int(B::YesNo) << 2 << "No" << int(A::Yes) << "Yes";
        QTest::newRow("yes/no/cancel, third")
            << int(B::YesNoCancel) << 3 << "Cancel" << int(A::Cancel) << "Cancel";
        QTest::newRow("ok/cancel, out of range keeps Qt's")
            << int(B::OkCancel) << 7 << "?" << int(A::Ok) << "OK";
    }
    void buttonsDefaultAndAnswer() {
        QFETCH(int, buttons);
        QFETCH(int, defaultButton);
        QFETCH(QString, expectedDefault);
        QFETCH(QString, press);
        QString seen; // title|default button
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            seen =
                box->windowTitle() + '|' + (box->defaultButton() ? box->defaultButton()->text() : QString());
            for (QAbstractButton* b : box->buttons())
                if (b->text().remove('&') == press)
                    b->click();
        });
        QtDialogs dialogs(nullptr);
        QTEST(int(dialogs.message("Frage", QString(), Dialogs::Buttons(buttons), Dialogs::Icon::Question,
                                  defaultButton)),
              "answer");
        QCOMPARE(seen.remove('&').section('|', 0, 0), Dialogs::defaultTitle());
        if (expectedDefault != "?")
            QCOMPARE(seen.section('|', 1), expectedDefault);
    }

    // A name typed without extension gets the one of the filter the user picked in the dialog.
    void saveTakesTheChosenFiltersExtension_data() {
        QTest::addColumn<int>("filter"); // how many entries down the user goes
        QTest::addColumn<QString>("saved");
        QTest::newRow("first filter") << 0 << "Liste.txt";
        QTest::newRow("M3U8 picked") << 1 << "Liste.m3u8";
    }
    void saveTakesTheChosenFiltersExtension() {
        QFETCH(int, filter);
        QFETCH(QString, saved);
        QTemporaryDir dir;
        QtDialogs dialogs(nullptr);
        QStringList shownFilters;
        QTimer::singleShot(0, [filter, &shownFilters] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            shownFilters = dialog->nameFilters();
            auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
            QVERIFY(types);
            for (int i = 0; i < filter; ++i)
                QTest::keyClick(types, Qt::Key_Down); // chosen as a user does, the dialog hears of it
            auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
            name->setText("Liste");
            QTest::keyClick(name, Qt::Key_Return);
        });
        Dialogs::FileRequest request;
        request.title = "Playliste speichern unter";
        // A description without its pattern gets it; a last description without pattern is dropped.
        request.filter = "Playlisten| *.txt|M3U8-Playliste (*.m3u8)| *.m3u8|Rest";
        request.initialDir = dir.path();
        request.defaultExt = "txt";
        const auto got = dialogs.saveFile(request);
        QCOMPARE(got.value_or("(cancelled)"), QDir::toNativeSeparators(dir.filePath(saved)));
        QCOMPARE(shownFilters, (QStringList{"Playlisten (*.txt)", "M3U8-Playliste (*.m3u8)"}));
    }
};

QTEST_MAIN(tst_QtDialogs)
#include "tst_QtDialogs.moc"
