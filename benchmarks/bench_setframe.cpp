#include "Rounds.h"

#include "deck/CPaneDeck.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QTimer>

#include <array>
#include <atomic>
#include <chrono>
#include <ctime>
#include <thread>

namespace {

constexpr int PaneCount = 9;
constexpr QSize FullHd(1920, 1080);

QImage frameOf(const QSize& size, QImage::Format format)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = qRgb(x, y, x * y);
    }
    return image.convertToFormat(format);
}

void paintPending()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

/// A deck on a screen of 1920 by 1080, all its panes in use.
struct Wall
{
    explicit Wall(int panes)
    {
        deck.resize(1920, 1080);
        deck.SetShowWndNo(panes);
        for (int i = 0; i < panes; ++i)
            deck.EnableRefresh(i, false);
        deck.show();
        paintPending();
    }

    CPaneDeck deck{nullptr, WND_TYPE_ALARM, PaneCount};
};

/// Frames of each pane's own, so that none waits in the cache.
QVector<QImage> frames(int panes, const QSize& size, QImage::Format format)
{
    QVector<QImage> all;
    for (int i = 0; i < panes; ++i)
        all.append(frameOf(size, format).copy());
    return all;
}

void setFrames(Wall& wall, const QVector<QImage>& all)
{
    for (int i = 0; i < all.size(); ++i)
        wall.deck.SetFrame(i, all[i]);
    paintPending();
}

void useOldSlot(Wall& wall, const QVector<QImage>& all)
{
    for (int i = 0; i < all.size(); ++i) {
        QWidget* handle = wall.deck.PaneWidget(i);
        handle->setUpdatesEnabled(true);
        QMetaObject::invokeMethod(handle, "slot_BufferChange",
                                  Q_ARG(ulong, ulong(all[i].constBits())),
                                                     Q_ARG(int, all[i].width()), Q_ARG(int, all[i].height()));
        handle->setUpdatesEnabled(false);
    }
    paintPending();
}

void compare(int panes, const QSize& size, int rounds)
{
    Wall wall(panes);
    const QVector<QImage> rgb888 = frames(panes, size, QImage::Format_RGB888);
    const QVector<QImage> rgb32 = frames(panes, size, QImage::Format_RGB32);
    const QVector<QImage> argb = frames(panes, size, QImage::Format_ARGB32);
    const QVector<Contender> contenders = {
        {"the old slot, RGB888", [&] { useOldSlot(wall, rgb888); }},
        {"SetFrame, RGB888", [&] { setFrames(wall, rgb888); }},
        {"SetFrame, RGB32", [&] { setFrames(wall, rgb32); }},
        {"SetFrame, ARGB32, which is converted", [&] { setFrames(wall, argb); }},
    };
    const QVector<double> times = MedianTimes(contenders, rounds);
    PrintTimes(QString("%1 frames of %2x%3, set and painted, on a deck of 1920x1080")
                   .arg(panes)
                   .arg(size.width())
                   .arg(size.height()),
               contenders, times);
    QTextStream(stdout) << QString("  RGB32 / RGB888 %1 x\n\n").arg(times[2] / times[1], 0, 'f', 2);
}

/// Of this thread's processor time, in seconds.
double threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

void post(CPaneDeck& deck, int pane, const QImage& frame, const std::atomic<bool>& end)
{
    constexpr auto Period = std::chrono::milliseconds(40);
    auto next = std::chrono::steady_clock::now() + Period * pane / PaneCount;
    while (!end) {
        std::this_thread::sleep_until(next);
        deck.PostFrame(pane, frame);
        next += Period;
    }
}

/// Nine threads of 25 frames a second each: what part of its core the GUI thread takes to show them.
void postFromThreads(const QSize& size, QImage::Format format, const QString& name)
{
    constexpr int Milliseconds = 4000;
    Wall wall(PaneCount);
    const QVector<QImage> all = frames(PaneCount, size, format);
    std::atomic<bool> end{false};
    std::array<std::thread, PaneCount> threads;
    for (int i = 0; i < PaneCount; ++i)
        threads[size_t(i)] = std::thread([&, i] { post(wall.deck, i, all[i], end); });
    QElapsedTimer clock;
    clock.start();
    const double before = threadTime();
    QTimer::singleShot(Milliseconds, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    const double share = (threadTime() - before) / (double(clock.elapsed()) / 1000);
    end = true;
    for (std::thread& thread : threads)
        thread.join();
    QTextStream(stdout) << QString("PostFrame from nine threads at 25 fps, %1x%2 %3: %4 % of the GUI core\n")
                               .arg(size.width())
                               .arg(size.height())
                               .arg(name)
                               .arg(share * 100, 0, 'f', 1);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    compare(1, FullHd, 100);
    compare(PaneCount, FullHd, 40);
    compare(PaneCount, QSize(704, 576), 60);
    for (const QSize& size : {QSize(704, 576), FullHd}) {
        postFromThreads(size, QImage::Format_RGB888, "RGB888");
        postFromThreads(size, QImage::Format_RGB32, "RGB32");
    }
    return 0;
}
