#include "window/PictureMaker.h"

#include "common/EventLog.h"
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
    : QObject(window), m_pWindow(window), m_strDirectory(directory), m_vecLayouts{1, 4, 9, 16, 64}
{
    QDir().mkpath(directory);
    startTimer(TickMs);
}

void PictureMaker::timerEvent(QTimerEvent*)
{
    if (m_nWaited < 0) {
        // The window has selected its own first layout by now.
        NextLayout();
        return;
    }
    m_nWaited += TickMs;
    const bool playing = m_pWindow->Live()->Streams()->PlayingCount() >= m_vecLayouts.first();
    m_nPlayed = playing ? m_nPlayed + TickMs : 0;
    if (m_nPlayed < SettleMs && m_nWaited < PatienceMs)
        return;
    TakePicture();
    m_vecLayouts.removeFirst();
    if (m_vecLayouts.isEmpty())
        QApplication::quit();
    else
        NextLayout();
}

void PictureMaker::NextLayout()
{
    m_nWaited = 0;
    m_nPlayed = 0;
    m_pWindow->Live()->Deck()->SetShowWndNo(m_vecLayouts.first());
}

void PictureMaker::TakePicture()
{
    const QString path = QDir(m_strDirectory).filePath(QString("live-%1.png").arg(m_vecLayouts.first()));
    // What is on the screen: a label that is in use paints only when a frame comes, not when it is asked to.
    const QPixmap picture = m_pWindow->windowHandle()->screen()->grabWindow(m_pWindow->winId());
    if (!picture.save(path))
        m_pWindow->Log()->Add("client", "can't write " + path);
}
