#include "deck/DeckProbe.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/XMLSplitInfo.h"
#include "support/Installation.h"
#include "support/SignalLog.h"

#include <QRandomGenerator>
#include <QScreen>
#include <QTemporaryDir>
#include <QWindow>

#include <thread>

using namespace DeckProbe;

namespace {

constexpr QRgb Filled = 0xff2080c0;

QImage Noise(const QSize& size, QImage::Format format)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<quint32*>(image.scanLine(y));
        random.fillRange(row, size.width());
        for (int x = 0; x < size.width(); ++x)
            row[x] |= 0xff000000;
    }
    return image.convertToFormat(format);
}

QImage Filling(QRgb color)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// A live deck on screen with four panes.
struct Wall
{
    Wall()
    {
        deck.resize(640, 530);
        deck.SetShowWndNo(4);
        deck.show();
        (void)QTest::qWaitForWindowExposed(&deck);
    }

    /// What stands on the screen where the pane's label lies.
    QImage OnScreen(int pane)
    {
        QCoreApplication::processEvents();
        const QWidget* label = deck.PaneWidget(pane);
        const QPoint place = label->mapTo(&deck, QPoint());
        return deck.screen()
            ->grabWindow(deck.winId(), place.x(), place.y(), label->width(), label->height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    CPaneDeck deck{nullptr, WND_TYPE_MONITOR, 9};
};

QImage Scaled(const QImage& frame, const QSize& size)
{
    return frame.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .convertToFormat(QImage::Format_RGB32);
}

} // namespace

/// Frames as an application has them: images, parts of images, from any thread.
class tst_deck_frames : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsAsScaled_data();
    void showsAsScaled();
    void readsRowsOnNoBoundary();
    void holdsUntilReplaced();
    void clears();
    void tellsSizeAndWholePlaces();
    void keepsTheNewest();
    void postsFromThreads();
    void takesInstallation();
};

void tst_deck_frames::showsAsScaled_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("source");
    const QSize odd(333, 217);
    QTest::newRow("rgb888") << int(QImage::Format_RGB888) << odd << QRect();
    QTest::newRow("rgb888 part") << int(QImage::Format_RGB888) << odd << QRect(31, 7, 101, 90);
    QTest::newRow("rgb32") << int(QImage::Format_RGB32) << odd << QRect();
    QTest::newRow("rgb32 part") << int(QImage::Format_RGB32) << odd << QRect(31, 7, 1, 1);
    QTest::newRow("rgb32 larger") << int(QImage::Format_RGB32) << QSize(1920, 1080)
                                  << QRect(3, 3, 1900, 1000);
    QTest::newRow("grey") << int(QImage::Format_Grayscale8) << odd << QRect(10, 10, 50, 50);
    QTest::newRow("beyond the edge") << int(QImage::Format_RGB32) << odd << QRect(300, 200, 100, 100);
    QTest::newRow("outside") << int(QImage::Format_RGB888) << odd << QRect(1000, 1000, 10, 10);
}

void tst_deck_frames::showsAsScaled()
{
    QFETCH(int, format);
    QFETCH(QSize, size);
    QFETCH(QRect, source);
    const QImage frame = Noise(size, QImage::Format(format));
    const QRect inside = source & frame.rect();
    Wall wall;
    wall.deck.EnableRefresh(1, false);
    for (const int pane : {0, 1}) {
        wall.deck.SetFrame(pane, frame, source);
        const QImage shown = wall.OnScreen(pane);
        QCOMPARE(shown, Scaled(frame.copy(inside.isEmpty() ? frame.rect() : inside), shown.size()));
    }
}

void tst_deck_frames::readsRowsOnNoBoundary()
{
    constexpr int stride = 83;
    const QImage frame = Noise(QSize(20, 10), QImage::Format_RGB32);
    std::vector<uchar> bytes(1 + stride * 10);
    for (int y = 0; y < frame.height(); ++y)
        std::copy_n(frame.constScanLine(y), 80, bytes.data() + 1 + y * stride);
    Wall wall;
    wall.deck.SetFrame(0, QImage(bytes.data() + 1, 20, 10, stride, QImage::Format_RGB32));
    const QImage shown = wall.OnScreen(0);
    QCOMPARE(shown, Scaled(frame, shown.size()));
}

void tst_deck_frames::holdsUntilReplaced()
{
    static int s_held;
    s_held = 0;
    const auto frame = [] {
        ++s_held;
        auto* pixels = new QRgb[100];
        std::fill_n(pixels, 100, Filled);
        return QImage(
            reinterpret_cast<uchar*>(pixels), 10, 10, 40, QImage::Format_RGB32,
            [](void* memory) {
                delete[] static_cast<QRgb*>(memory);
                --s_held;
            },
            pixels);
    };
    {
        Wall wall;
        wall.deck.SetFrame(0, frame());
        wall.deck.SetFrame(0, frame());
        QCOMPARE(s_held, 1);
        wall.deck.ResetWnd(0);
        wall.deck.SetShowWndNo(1);
        wall.deck.SetShowWndNo(4);
        QCOMPARE(wall.OnScreen(0).pixel(5, 5), Filled);
        wall.deck.SetFrame(0, QImage());
        QCOMPARE(s_held, 0);
        wall.deck.SetFrame(0, frame());
        ulong none = 0;
        QVERIFY(QMetaObject::invokeMethod(wall.deck.PaneWidget(0), "slot_BufferChange",
                                          Q_ARG(ulong, none), Q_ARG(int, 0), Q_ARG(int, 0)));
        QCOMPARE(s_held, 0);
        wall.deck.SetFrame(8, frame());
        wall.deck.SetFrame(9, frame());
        wall.deck.SetFrame(-1, frame());
        QCOMPARE(s_held, 1);
    }
    QCOMPARE(s_held, 0);
}

void tst_deck_frames::clears()
{
    Wall wall;
    const QImage idle = wall.OnScreen(0);
    wall.deck.EnableRefresh(1, false);
    for (const int pane : {0, 1}) {
        wall.deck.SetFrame(pane, Filling(Filled));
        QVERIFY(wall.OnScreen(pane) != idle);
        wall.deck.SetFrame(pane, QImage());
        QCOMPARE(wall.OnScreen(pane), idle);
    }
}

void tst_deck_frames::tellsSizeAndWholePlaces()
{
    Wall wall;
    SignalLog log;
    log.Watch(&wall.deck, SIGNAL(sig_SelectRegion(int,QPoint,QPoint)));
    log.Watch(wall.deck.PaneWidget(0), SIGNAL(sig_VideoResize(int,int)));
    wall.deck.setScaseType(WND_SCASE_VIDEO, 0);
    QImage wide(1600, 400, QImage::Format_RGB888);
    wide.fill(Qt::darkGreen);
    wall.deck.SetFrame(0, wide, QRect(400, 100, 800, 200));
    wall.deck.SetFrame(0, wide, QRect(800, 200, 400, 100));
    QCOMPARE(log.Take(), QStringList{"sig_VideoResize(1600,400)"});
    // Scaled copies of one video have its size.
    for (const int width : {320, 160})
        wall.deck.SetFrame(0, wide.scaledToWidth(width), QRect(), QSize(800, 600));
    QCOMPARE(log.Take(), QStringList{"sig_VideoResize(800,600)"});
    wall.deck.PostFrame(0, wide, QRect(), QSize(900, 600));
    QCoreApplication::sendPostedEvents();
    QCOMPARE(log.Take(), QStringList{"sig_VideoResize(900,600)"});
    wall.deck.SetFrame(0, wide, QRect(800, 200, 400, 100), QSize(0, 600));
    QCOMPARE(log.Take(), QStringList{"sig_VideoResize(1600,400)"});
    const QSize size = wall.deck.PaneWidget(0)->size();
    QVERIFY2(qAbs(size.width() - 4 * size.height()) < 16, "shaped as the whole frame is");

    wall.deck.SetFunctionParam(0, 2);
    const QPoint from(size.width() / 4, size.height() / 4);
    const QPoint to(size.width() / 2, size.height() / 2);
    Mouse::Drag(wall.deck.PaneWidget(0), from, {to});
    const auto whole = [&size](const QPoint& part) {
        return QPoint(int(size.width() / 2.0 + part.x() / 4.0), int(size.height() / 2.0 + part.y() / 4.0));
    };
    QCOMPARE(log.Take(), QStringList{QString("sig_SelectRegion(0,(%1,%2),(%3,%4))")
                                         .arg(whole(from).x())
                                         .arg(whole(from).y())
                                         .arg(whole(to).x())
                                         .arg(whole(to).y())});
    QTest::mouseClick(wall.deck.PaneWidget(0), Qt::LeftButton, {}, from);
    QVERIFY2(log.Take().first().endsWith(",(-1,-1))"), "a click without a move");
}

void tst_deck_frames::keepsTheNewest()
{
    Wall wall;
    SignalLog log;
    log.Watch(wall.deck.PaneWidget(0), SIGNAL(sig_VideoResize(int,int)));
    wall.deck.PostFrame(0, Filling(qRgb(0, 0, 0)));
    wall.deck.PostFrame(1, Filling(qRgb(0, 0, 0)));
    log.onSignal = [&wall](const QString&) {
        wall.deck.PostFrame(0, Filling(Filled));
        wall.deck.PostFrame(1, Filling(Filled));
        // As a dialog of the receiver's would.
        QCoreApplication::processEvents();
    };
    QTRY_COMPARE(wall.OnScreen(0).pixel(5, 5), Filled);
    QTRY_COMPARE(wall.OnScreen(1).pixel(5, 5), Filled);
    QCOMPARE(log.Take().size(), 1);
}

void tst_deck_frames::postsFromThreads()
{
    Wall wall;
    wall.deck.SetShowWndNo(9);
    std::vector<std::thread> cameras;
    for (int pane = -1; pane < 10; ++pane) {
        cameras.emplace_back([&wall, pane] {
            for (int i = 1; i <= 200; ++i)
                wall.deck.PostFrame(pane, Filling(qRgb(pane, i, 0)));
        });
    }
    for (int step = 0; step < 20; ++step) {
        wall.deck.SetShowWndNo(step % 2 ? 4 : 9);
        QCoreApplication::processEvents();
    }
    wall.deck.SetShowWndNo(9);
    for (std::thread& camera : cameras)
        camera.join();
    for (int pane = 0; pane < 9; ++pane)
        QCOMPARE(wall.OnScreen(pane).pixel(5, 5), qRgb(pane, 200, 0));

    // A receiver may delete the deck while frames wait.
    auto* doomed = new CPaneDeck(nullptr, WND_TYPE_MONITOR, 2);
    SignalLog log;
    log.Watch(doomed->PaneWidget(0), SIGNAL(sig_VideoResize(int,int)));
    log.onSignal = [doomed](const QString&) { delete doomed; };
    doomed->PostFrame(0, Filling(Filled));
    doomed->PostFrame(1, Filling(Filled));
    QCoreApplication::processEvents();
    QCOMPARE(log.Take().size(), 1);
}

void tst_deck_frames::takesInstallation()
{
    const Installation beside(0);
    QTemporaryDir root;
    QDir(root.path()).mkpath("share/Organization");
    const QString writable = root.path() + "/user/layouts";
    CPaneDeck::SetInstallation(root.path() + "/share", writable);
    {
        const CPaneDeck deck;
        const CSplitCatalog* catalog = CSplitCatalog::Instance();
        QCOMPARE(catalog->organizationDir, root.path() + "/share/Organization");
        QCOMPARE(catalog->splitFilePath, writable + "/SplitInfo.xml");
        const ExpectedWarning late("SetInstallation");
        CPaneDeck::SetInstallation(QString(), QString());
        QCOMPARE(late.Count(), 1);
        XMLSplitInfo().Write();
        QVERIFY(QFile::exists(catalog->splitFilePath) && !QFile::exists(catalog->installedSplitFilePath));
        QVERIFY(QFile::rename(catalog->splitFilePath, catalog->installedSplitFilePath));
        QCOMPARE(XMLSplitInfo().Read(), 1);
        QFile own(catalog->splitFilePath);
        QVERIFY(own.open(QIODevice::WriteOnly) && own.write("no layouts") > 0);
        own.close();
        QVERIFY2(XMLSplitInfo().Read() < 1, "the user's own file wins");
    }
    CSplitCatalog::Release();
    CPaneDeck::SetInstallation(QString(), QString());
}

QTEST_MAIN(tst_deck_frames)

#include "tst_deck_frames.moc"
