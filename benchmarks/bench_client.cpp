#include "cameras/CaptionStrip.h"
#include "deck/CPaneDeck.h"
#include "panes/FrameCover.h"
#include "panes/FramePump.h"
#include "source/SourceThread.h"
#include "synthetic/CameraSource.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <memory>

namespace {

constexpr int Panes = 64;
constexpr int WarmUpMs = 6000;
constexpr int MeasuredMs = 10000;

double Seconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// A wall of synthetic cameras that play as they do in the client, and the count of what is painted of them.
class PlayingWall : public QObject
{
public:
    PlayingWall()
    {
        m_deck.resize(1920, 1080);
        m_deck.SetShowWndNo(Panes);
        m_deck.show();
        for (int i = 0; i < Panes; ++i) {
            QWidget* label = m_deck.PaneWidget(i);
            m_deck.EnableRefresh(i, false);
            label->parentWidget()->findChild<FrameCover*>()->installEventFilter(this);
            m_sources.push_back(makeCameraSource(SourceAddress::synthetic(i + 1), captionStrip));
            m_pumps.push_back(std::make_unique<FramePump>(&m_deck, i));
            m_pumps.back()->setSource(m_sources.back().get());
            m_sources.back()->start();
        }
    }

    int Painted() const { return m_painted; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_painted += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

private:
    CPaneDeck m_deck;
    std::vector<std::unique_ptr<VideoSource>> m_sources;
    std::vector<std::unique_ptr<FramePump>> m_pumps;
    int m_painted = 0;
};

void Measure()
{
    PlayingWall wall;
    QEventLoop loop;
    QTimer::singleShot(WarmUpMs, &loop, &QEventLoop::quit);
    loop.exec();

    const int paintedBefore = wall.Painted();
    const double guiBefore = Seconds(CLOCK_THREAD_CPUTIME_ID);
    const double allBefore = Seconds(CLOCK_PROCESS_CPUTIME_ID);
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(MeasuredMs, &loop, &QEventLoop::quit);
    loop.exec();
    const double elapsed = double(timer.nsecsElapsed()) / 1e9;
    std::printf("%d playing cameras: %.0f frames shown a second, %.1f %% of a core in the GUI thread, "
                "%.1f %% in all threads\n",
                Panes, (wall.Painted() - paintedBefore) / elapsed,
                100 * (Seconds(CLOCK_THREAD_CPUTIME_ID) - guiBefore) / elapsed,
                100 * (Seconds(CLOCK_PROCESS_CPUTIME_ID) - allBefore) / elapsed);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Measure();
    waitForSourceThreads(1000);
    return 0;
}
