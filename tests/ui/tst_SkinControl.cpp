// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "base/StatusLine.h"
#include "support/MainWindowRig.h"
#include "support/TestServices.h"
#include "ui/SkinControl.h"

#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

// The bitmap button: its shape from the mask colour, the hover face and the events it raises.
class tst_SkinControl : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    const QRgb kMask = qRgb(255, 0, 255);

    // A face drawn from rows of '#' (the colour) and '.' (the mask colour), saved as a bitmap.
    QString face(const QString& name, const QString& pattern, QRgb colour = qRgb(60, 60, 60)) {
        const QStringList rows = pattern.split('|');
        QImage img(rows.first().size(), rows.size(), QImage::Format_RGB32);
        for (int y = 0; y < rows.size(); ++y)
            for (int x = 0; x < rows[y].size(); ++x)
                img.setPixel(x, y, rows[y][x] == '#' ? colour : kMask);
        const QString path = m_dir.filePath(name);
        img.save(path, "BMP");
        return path;
    }
    static QString plain(int width, int height) { return QStringList(height, QString(width, '#')).join('|'); }

    static void moveOver(QWidget* w, QPoint at) {
        QMouseEvent e(QEvent::MouseMove, at, w->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &e);
    }

private slots:
    void shapeFollowsTheMaskColour_data() {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("changeMask");
        QTest::newRow("all mask: invisible, same size") << "....|....|...." << true;
        QTest::newRow("rounded corners") << ".##.|####|.##." << true;
        QTest::newRow("run up to the right edge") << "..##|...#" << true;
        QTest::newRow("mask ignored when off") << ".##.|####|.##." << false;
    }
    void shapeFollowsTheMaskColour() {
        QFETCH(QString, pattern);
        QFETCH(bool, changeMask);
        const QStringList rows = pattern.split('|');
        SkinControl b("Play");
        b.setChangeMask(changeMask);
        // A file name per row: the pixmap cache knows a file by its name and time.
        b.setImage(face(QString(QTest::currentDataTag()) + ".bmp", pattern));
        QCOMPARE(b.size(), QSize(rows.first().size(), rows.size()));
        QCOMPARE(b.mask().isEmpty(), !changeMask);
        for (int y = 0; y < rows.size(); ++y)
            for (int x = 0; x < rows[y].size(); ++x) {
                const bool shown = !changeMask || rows[y][x] == '#';
                QCOMPARE(b.shape().contains(QPoint(x, y)), shown);
                QVERIFY(!changeMask || b.mask().contains(QPoint(x, y)) == shown);
            }
    }

    void hoverSwapsTheFaceOrReportsItMissing() {
        const QString normal = face("n.bmp", plain(86, 22), qRgb(10, 10, 10));
        const QString over = face("o.bmp", plain(86, 22), qRgb(200, 200, 200));
        SkinControl b("Stop");
        b.setImageOver(over);
        b.setImage(normal);
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(10, 10, 10));
        // The caption is centred, one pixel towards the lower right.
        QCOMPARE(b.BtnLabel->pos(),
                 QPoint((86 - b.BtnLabel->width()) / 2 + 1, (22 - b.BtnLabel->height()) / 2 + 1));
        QSignalSpy moves(&b, &SkinControl::MouseMove);
        moveOver(&b, QPoint(10, 10));
        QVERIFY(b.Over());
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(200, 200, 200));
        QCOMPARE(moves.count(), 1);
        b.setOver(false);
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(10, 10, 10));
        // A missing hover face is reported each time the mouse enters; the old face stays.
        StatusLine status;
        b.setStatusLine(&status);
        const QString missing = m_dir.filePath("fehlt.bmp");
        b.setImageOver(missing);
        const QString text = "Fehler beim Laden von Button Bild \"" + missing + "\"!";
        moveOver(&b, QPoint(3, 3));
        QCOMPARE(status.text(), text);
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(10, 10, 10));
        status.setText(QString());
        moveOver(&b, QPoint(4, 3)); // still over: nothing new
        QCOMPARE(status.text(), QString());
        b.setOver(false);
        moveOver(&b, QPoint(5, 3));
        QCOMPARE(status.text(), text);
    }

    // A click on the caption is a click on the button; Space and Enter click too, and the owner
    // hears each key go down and up.
    void clicksByCaptionAndKeys() {
        SkinControl b("&Playliste öffnen");
        b.resize(86, 22);
        b.show();
        QVERIFY(QTest::qWaitForWindowExposed(&b));
        QSignalSpy clicks(&b, &QAbstractButton::clicked);
        QSignalSpy down(&b, &SkinControl::KeyDown);
        QSignalSpy up(&b, &SkinControl::KeyUp);
        QTest::mouseClick(&b, Qt::LeftButton, {}, b.BtnLabel->geometry().center());
        QCOMPARE(clicks.count(), 1);
        QTest::keyClick(&b, Qt::Key_Space);
        QCOMPARE(clicks.count(), 2);
        QTest::keyClick(&b, Qt::Key_Return);
        QTRY_COMPARE(clicks.count(), 3);
        QCOMPARE(down.count() + up.count(), 4);
    }

    void mainWindowSkinsItsButtonsAndResetsHover() {
        MainWindowRig r;
        r.w.load();
        const MainWindowUi& w = r.ui();
        for (SkinControl* b : {w.BPLOpen, w.BPLSave, w.BUpdateList, w.BCreateList}) {
            QCOMPARE(b->size(), QSize(129, 22));
            QVERIFY(b->shape().contains(QPoint(5, 5)) &&
                    !b->shape().contains(QPoint(0, 0))); // rounded corner
        }
        QVERIFY(!r.t.status.text().startsWith("Fehler beim Laden"));
        w.BPLOpen->setOver(true);
        w.BCreateList->setOver(true);
        QMouseEvent move(QEvent::MouseMove, QPointF(300, 300), QPointF(300, 300), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&r.w, &move);
        QVERIFY(!w.BPLOpen->Over() && !w.BCreateList->Over());
    }
};

QTEST_MAIN(tst_SkinControl)
#include "tst_SkinControl.moc"
