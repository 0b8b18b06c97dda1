#include "panes/SurfaceStage.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"

#include <QPainter>

#include <climits>

namespace {

QColor ColorOfZone(int zone)
{
    return QColor(zone * 16, 255 - zone * 16, 40);
}

void WriteCursors(const Installation& installation, int size)
{
    const QString names = "center up down left right leftup leftdown rightup rightdown 9 10";
    int zone = 0;
    for (const QString& name : ("ptz" + names.split(' ').join("|ptz") + "|window_Drag").split('|'))
        installation.WritePicture("ResourcesBlank/VideoWidget/" + name + ".png", size, size,
                                  ColorOfZone(zone++));
}

} // namespace

class tst_surface_look : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void placesLabel();
    void survivesAbsurdSizes();
    void showsCursorOfZone();
    void drawsSelectionInRim();
    void drawsOwnPicture();
    void marksAlarm();
    void showsThroughAlarm_data();
    void showsThroughAlarm();
};

void tst_surface_look::placesLabel()
{
    // A row a scale, then one where truncation makes 16:9 of the surface.
    const QRect places[] = {{18, 1, 364, 298},  {1, 1, 398, 298},  {51, 1, 298, 298}, {1, 1, 398, 298},
                            {88, 1, 223, 298},  {13, 1, 373, 298}, {81, 1, 238, 298}, {1, 38, 398, 223},
                            {117, 1, 166, 298}, {1, 123, 398, 54}, {180, 1, 40, 298}, {1, 1, 398, 223}};
    for (int i = 0; i < 12; ++i) {
        const QSize size = i < 11 ? QSize(400, 300) : QSize(401, 225);
        Stage stage(size);
        stage.surface->SetScale(WND_SCASE_VIDEO);
        QCOMPARE(stage.label->geometry(), stage.surface->rect().adjusted(1, 1, -1, -1));
        stage.surface->SetScale(WndScase(i < 11 ? i : 7));
        stage.surface->slot_VideoResize(704, 576);
        QCOMPARE(stage.label->geometry(), places[i]);
        stage.Resize(QSize(50, 40));
        stage.Resize(size);
        for (const int unknown : {11, -1, INT_MAX}) {
            stage.surface->SetScale(WndScase(unknown));
            QCOMPARE(stage.label->geometry(), places[i]);
        }
    }
}

void tst_surface_look::survivesAbsurdSizes()
{
    ExpectedWarning minimum("setMinimumSize");
    ExpectedWarning maximum("setMaximumSize");
    for (const QSize& size : {QSize(0, 0), QSize(1, 1), QSize(2, 300), QSize(16777215, 1)}) {
        Stage stage;
        stage.surface->SetScale(WND_SCASE_VIDEO);
        for (const QSize& video : {QSize(INT_MAX, 1), QSize(1, INT_MAX), QSize(INT_MIN, 5), QSize(5, -1)}) {
            stage.surface->slot_VideoResize(video.width(), video.height());
            stage.surface->resize(size);
            QVERIFY(stage.label->width() <= qMax(0, size.width()));
            stage.surface->resize(202, 102);
        }
    }
    QVERIFY(minimum.Count() > 0);
}

void tst_surface_look::showsCursorOfZone()
{
    Installation installation;
    WriteCursors(installation, 32);
    Stage stage;
    for (int zone = -2; zone <= 13; ++zone) {
        stage.surface->SetCursorZone(zone);
        const bool picture = (zone >= 0 && zone <= 8) || zone == 11;
        const QCursor cursor = stage.label->cursor();
        QCOMPARE(cursor.shape(), picture      ? Qt::BitmapCursor
                                 : zone == 12 ? Qt::PointingHandCursor
                                              : Qt::ArrowCursor);
        if (!picture)
            continue;
        QCOMPARE(cursor.pixmap().toImage().pixelColor(3, 3), ColorOfZone(zone));
        QCOMPARE(cursor.hotSpot(), QPoint(16, 16));
        QCOMPARE(cursor.pixmap().size(), QSize(32, 32) * stage.label->devicePixelRatioF());
    }
    stage.Play("E F1 M190,50");
    QCOMPARE(stage.label->cursor().pixmap().toImage().pixelColor(3, 3), ColorOfZone(4));
    stage.Play("E");
    QCOMPARE(stage.label->cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(!stage.surface->testAttribute(Qt::WA_SetCursor));
    WriteCursors(installation, 48);
    stage.Play("M191,50");
    QCOMPARE(stage.label->cursor().pixmap().size(), QSize(48, 48) * stage.label->devicePixelRatioF());
    const qint64 key = stage.label->cursor().pixmap().cacheKey();
    stage.Play("M192,50");
    QCOMPARE(stage.label->cursor().pixmap().cacheKey(), key);
    QVERIFY(QFile::remove(installation.Resources() + "/VideoWidget/ptzright.png"));
    stage.Play("M190,50");
    QCOMPARE(stage.label->cursor().shape(), Qt::ArrowCursor);
    Mouse::Leave(stage.label);
    QVERIFY(!stage.label->hasMouseTracking());
}

void tst_surface_look::drawsSelectionInRim()
{
    for (const int style : {0, 1, 2}) {
        Installation installation(style);
        Stage stage(QSize(40, 30));
        QImage expected = stage.surface->grab().toImage();
        QCOMPARE(expected.pixelColor(20, 15), QColor(249, 249, 249));
        QPainter painter(&expected);
        painter.setPen(style == 1 ? QColor(238, 238, 238) : QColor(Qt::blue));
        painter.drawRect(0, 0, 39, 29);
        painter.end();
        stage.surface->SetSelected(true);
        QCOMPARE(stage.surface->grab().toImage(), expected);
    }
}

void tst_surface_look::drawsOwnPicture()
{
    // A row of two pixels takes six bytes and is padded to eight.
    const uchar pixels[] = {255, 0, 0, 0, 255, 0, 9, 9, 0, 0, 255, 255, 255, 0, 9, 9};
    const ulong address = reinterpret_cast<ulong>(pixels);
    Stage stage(QSize(42, 32));
    stage.label->hide();
    const QImage empty = stage.surface->grab().toImage();
    stage.surface->slot_BufferChange(address, 2, 2);
    stage.surface->slot_BufferChange(0, 2, 2);
    const QImage seen = stage.surface->grab().toImage();
    QVERIFY(seen.pixelColor(1, 1) == QColor(Qt::red) && seen.pixelColor(40, 1) == QColor(Qt::green));
    for (const QSize& size : {QSize(2, -1), QSize(INT_MAX, INT_MAX)}) {
        stage.surface->slot_BufferChange(address, size.width(), size.height());
        QCOMPARE(stage.surface->grab().toImage(), empty);
    }
}

void tst_surface_look::marksAlarm()
{
    Stage stage(QSize(200, 150));
    auto* mark = stage.surface->findChildren<QLabel*>().value(1);
    QVERIFY(mark->isHidden());
    stage.surface->ShowAlarmMark(true);
    QCOMPARE(mark->geometry(), QRect(126, 0, 74, 74));
    stage.surface->SetScale(WND_SCASE_9_64);
    stage.Resize(QSize(300, 150));
    QCOMPARE(mark->geometry(), QRect(226, 0, 74, 74));
}

void tst_surface_look::showsThroughAlarm_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("alpha");
    QTest::newRow("translucent") << 74 << 128;
    QTest::newRow("enlarged beyond its outline") << 31 << 255;
}

void tst_surface_look::showsThroughAlarm()
{
    QFETCH(int, size);
    QFETCH(int, alpha);
    Installation installation;
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setBrush(QColor(255, 0, 0, alpha));
    painter.drawEllipse(2, 2, size - 4, size - 4);
    painter.end();
    installation.Write("ResourcesBlank/VideoWidget/ALARM.png", QByteArray());
    QVERIFY(picture.save(installation.Resources() + "/VideoWidget/ALARM.png"));
    Stage stage(QSize(200, 150));
    QImage frame(8, 8, QImage::Format_RGB888);
    frame.fill(Qt::green);
    stage.label->slot_BufferChange(reinterpret_cast<ulong>(frame.constBits()), 8, 8);
    const QRect place(126, 0, 74, 74);
    QImage expected = stage.surface->grab(place).toImage();
    const QLabel* mark = stage.surface->findChildren<QLabel*>().last();
    const QImage shape = mark->pixmap(Qt::ReturnByValue).toImage();
    QPainter over(&expected);
    over.setClipRegion(mark->mask());
    over.drawImage(0, 0, shape.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    over.end();
    stage.surface->SetRefreshEnabled(false);
    stage.surface->SetRefreshEnabled(true);
    stage.surface->ShowAlarmMark(true);
    QCOMPARE(stage.surface->grab(place).toImage(), expected);
}

QTEST_MAIN(tst_surface_look)

#include "tst_surface_look.moc"
