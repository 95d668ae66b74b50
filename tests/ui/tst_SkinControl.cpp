// Table rows read better as plain literals; the product code keeps the strict conversions.
#undef QT_NO_CAST_FROM_ASCII

#include "app/TavoMP3PlayerMain.h"
#include "base/StatusLine.h"
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

    // A face of the given size: mask colour where `masked` says so, else a plain grey.
    QString face(const QString& name, QSize size, const std::function<bool(int, int)>& masked,
                 QRgb colour = qRgb(60, 60, 60)) {
        QImage img(size, QImage::Format_RGB32);
        for (int y = 0; y < size.height(); ++y)
            for (int x = 0; x < size.width(); ++x)
                img.setPixel(x, y, masked(x, y) ? kMask : colour);
        const QString path = m_dir.filePath(name);
        img.save(path, "BMP");
        return path;
    }

    // A plain mouse move as the window system delivers it, without a button held.
    static void moveOver(QWidget* w, QPoint at) {
        QMouseEvent e(QEvent::MouseMove, at, w->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(w, &e);
    }

private slots:
    void shapeIsTheUnionOfRuns_data() {
        QTest::addColumn<QString>("pattern"); // rows of '#' (face) and '.' (mask)
        QTest::addColumn<int>("area");
        QTest::addColumn<int>("rects");
        QTest::newRow("no mask pixel: full rectangle") << "####|####|####" << 12 << 1;
        QTest::newRow("all mask: empty") << "....|....|...." << 0 << 0;
        QTest::newRow("rounded corners") << ".##.|####|.##." << 8 << 3;
        QTest::newRow("run up to the right edge") << "..##|...#" << 3 << 2;
    }
    void shapeIsTheUnionOfRuns() {
        QFETCH(QString, pattern);
        QFETCH(int, area);
        QFETCH(int, rects);
        const QStringList rows = pattern.split('|');
        QImage img(rows.first().size(), rows.size(), QImage::Format_RGB32);
        for (int y = 0; y < rows.size(); ++y)
            for (int x = 0; x < rows[y].size(); ++x)
                img.setPixel(x, y, rows[y][x] == '#' ? qRgb(1, 2, 3) : kMask);
        const QRegion region = SkinControl::shapeRegion(img, kMask);
        int covered = 0;
        for (const QRect& r : region)
            covered += r.width() * r.height();
        QCOMPARE(covered, area);
        QCOMPARE(region.isEmpty(), rects == 0);
        for (int y = 0; y < rows.size(); ++y)
            for (int x = 0; x < rows[y].size(); ++x)
                QCOMPARE(region.contains(QPoint(x, y)), rows[y][x] == '#');
    }

    void refreshSizesAndShapesTheControl_data() {
        QTest::addColumn<bool>("changeMask");
        QTest::addColumn<bool>("allMask");
        QTest::addColumn<int>("shapeArea");
        QTest::newRow("corners cut") << true << false << 129 * 22 - 4;
        QTest::newRow("mask ignored when off") << false << false << 129 * 22;
        QTest::newRow("all mask: invisible, same size") << true << true << 0;
    }
    void refreshSizesAndShapesTheControl() {
        QFETCH(bool, changeMask);
        QFETCH(bool, allMask);
        QFETCH(int, shapeArea);
        // A file name per row: the pixmap cache knows a file by its name and time.
        const QString path =
            face(QString(QTest::currentDataTag()) + ".bmp", QSize(129, 22),
                 [&](int x, int y) { return allMask || ((x == 0 || x == 128) && (y == 0 || y == 21)); });
        SkinControl b("Play");
        b.setChangeMask(changeMask);
        b.setImage(path);
        QVERIFY(!b.lblMessage->isVisibleTo(&b));
        QCOMPARE(b.size(), QSize(129, 22));
        int area = 0;
        for (const QRect& r : b.shape())
            area += r.width() * r.height();
        QCOMPARE(area, shapeArea);
        QCOMPARE(b.mask().isEmpty(), !changeMask);
        if (allMask)
            QVERIFY(!b.mask().intersects(b.rect()));
        // The caption is centred, one pixel towards the lower right.
        QCOMPARE(b.BtnLabel->x(), (129 - b.BtnLabel->width()) / 2 + 1);
        QCOMPARE(b.BtnLabel->y(), (22 - b.BtnLabel->height()) / 2 + 1);
    }

    void hoverSwapsTheFaceUntilTheOwnerResetsIt() {
        const QString normal = face(
            "n.bmp", QSize(86, 22), [](int, int) { return false; }, qRgb(10, 10, 10));
        const QString over = face(
            "o.bmp", QSize(86, 22), [](int, int) { return false; }, qRgb(200, 200, 200));
        SkinControl b("Stop");
        b.setImageOver(over);
        b.setImage(normal);
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(10, 10, 10));
        QSignalSpy moves(&b, &SkinControl::MouseMove);
        moveOver(&b, QPoint(10, 10));
        QVERIFY(b.Over());
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(200, 200, 200));
        QCOMPARE(moves.count(), 1);
        b.setOver(false);
        QCOMPARE(b.Picture().toImage().pixel(5, 5), qRgb(10, 10, 10));
    }

    void missingBitmapIsReportedEachTimeTheMouseEnters() {
        const QString normal = face("n2.bmp", QSize(86, 22), [](int, int) { return false; });
        StatusLine status;
        SkinControl b("Next");
        b.setStatusLine(&status);
        b.setImage(normal);
        const QString missing = m_dir.filePath("fehlt.bmp");
        b.setImageOver(missing);
        const QString text = "Fehler beim Laden von Button Bild \"" + missing + "\"!";
        moveOver(&b, QPoint(3, 3));
        QCOMPARE(status.text(), text);
        QCOMPARE(b.size(), QSize(86, 22)); // the old face stays
        status.setText(QString());
        moveOver(&b, QPoint(4, 3)); // still over: nothing new
        QCOMPARE(status.text(), QString());
        b.setOver(false);
        moveOver(&b, QPoint(5, 3));
        QCOMPARE(status.text(), text);
    }

    // Space and Enter click; the owner hears each key go down and up.
    void worksWithoutAMouse() {
        SkinControl b("&Playliste öffnen");
        QCOMPARE(b.focusPolicy(), Qt::StrongFocus);
        QSignalSpy clicks(&b, &QAbstractButton::clicked);
        QSignalSpy down(&b, &SkinControl::KeyDown);
        QSignalSpy up(&b, &SkinControl::KeyUp);
        QTest::keyClick(&b, Qt::Key_Space);
        QCOMPARE(clicks.count(), 1);
        QTest::keyClick(&b, Qt::Key_Return);
        QTRY_COMPARE(clicks.count(), 2);
        QCOMPARE(down.count(), 2);
        QCOMPARE(up.count(), 2);
    }

    // A click on the caption is a click on the button.
    void clickOnTheCaptionClicks() {
        SkinControl b("Pause");
        b.resize(86, 22);
        b.show();
        QVERIFY(QTest::qWaitForWindowExposed(&b));
        QSignalSpy clicks(&b, &QAbstractButton::clicked);
        QTest::mouseClick(&b, Qt::LeftButton, {}, b.BtnLabel->geometry().center());
        QCOMPARE(clicks.count(), 1);
    }

    void mainWindowSkinsItsButtonsAndResetsHover() {
        TestServices t;
        TavoMP3PlayerMain w(t.services);
        w.load();
        for (SkinControl* b : {w.BPLOpen, w.BPLSave, w.BUpdateList, w.BCreateList}) {
            QCOMPARE(b->size(), QSize(129, 22));
            QVERIFY(b->shape().contains(QPoint(5, 5)) &&
                    !b->shape().contains(QPoint(0, 0))); // rounded corner
        }
        QVERIFY(!t.status.text().startsWith("Fehler beim Laden"));
        w.BPLOpen->setOver(true);
        w.BCreateList->setOver(true);
        QMouseEvent move(QEvent::MouseMove, QPointF(300, 300), QPointF(300, 300), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&w, &move);
        QVERIFY(!w.BPLOpen->Over() && !w.BCreateList->Over());
    }
};

QTEST_MAIN(tst_SkinControl)
#include "tst_SkinControl.moc"
