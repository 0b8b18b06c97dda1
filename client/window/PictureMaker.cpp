#include "window/PictureMaker.h"

#include "common/EventLog.h"
#include "common/Words.h"
#include "panes/DeckStreams.h"
#include "tabs/LiveTab.h"
#include "window/MainWindow.h"

#include <CPaneDeck.h>

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

namespace {

constexpr int TickMs = 200;
constexpr int SettleMs = 800;
constexpr int PatienceMs = 15000;

} // namespace

PictureMaker::PictureMaker(MainWindow* window, const QString& directory)
    : QObject(window), m_window(window), m_directory(directory), m_layouts{1, 4, 9, 16, 64}
{
    QDir().mkpath(directory);
    startTimer(TickMs);
}

void PictureMaker::timerEvent(QTimerEvent*)
{
    if (m_waitedMs < 0) {
        // The window has selected its own first layout by now.
        nextLayout();
        return;
    }
    m_waitedMs += TickMs;
    const bool playing = m_window->live()->streams()->playingCount() >= m_layouts.first();
    m_playedMs = playing ? m_playedMs + TickMs : 0;
    if (m_playedMs < SettleMs && m_waitedMs < PatienceMs)
        return;
    takePicture();
    m_layouts.removeFirst();
    if (m_layouts.isEmpty())
        QApplication::quit();
    else
        nextLayout();
}

void PictureMaker::nextLayout()
{
    m_waitedMs = 0;
    m_playedMs = 0;
    m_window->live()->deck()->SetShowWndNo(m_layouts.first());
}

void PictureMaker::takePicture()
{
    const QString path = QDir(m_directory).filePath(QString("live-%1.png").arg(m_layouts.first()));
    // What is on the screen: a label that is in use paints only when a frame comes, not when it is asked to.
    const QPixmap picture = m_window->windowHandle()->screen()->grabWindow(m_window->winId());
    if (!picture.save(path))
        m_window->log()->add(word("client"), word("can't write %1").arg(path));
}
