#include "cameras/ClientArchive.h"
#include "cameras/FleetDesk.h"
#include "common/EventLog.h"
#include "common/Words.h"
#include "panes/PaneOverlay.h"
#include "tabs/LiveTab.h"
#include "views/OldView.h"
#include "views/SharedViews.h"
#include "views/ViewList.h"
#include "window/MainWindow.h"
#include "window/SecondWindows.h"
#include "window/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>

namespace {

constexpr char PlaceKey[] = "window/place";
constexpr char AcrossKey[] = "window/across";
constexpr char DownKey[] = "window/down";

} // namespace

void MainWindow::openViews(const QString& view)
{
    m_views = new ViewList(ViewList::userPath(), this);
    openWindows();
    QString error;
    if (!m_views->read(&error))
        m_log->add(word("client"), error);
    takeOldView(m_views, m_cameras);
    if (m_fleet)
        new SharedViews(m_fleet.get(), m_cameras, m_views, m_views);
    if (!view.isEmpty() && !m_views->find(view) && !m_fleet)
        m_log->add(word("client"), word("There is no view %1").arg(view), EventLog::Level::Warning);
    const bool isAsked = m_views->find(view);
    const QString& usual = m_views->find(m_views->start()) ? m_views->start() : m_views->last();
    const DeckView* first = m_views->find(isAsked ? view : usual);
    // A trial with other cameras would begin with empty panes.
    const auto isThere = [this](const PaneView& pane) { return m_cameras.byId(pane.camera); };
    // A fleet's come later.
    if (first && (isAsked || m_fleet || std::any_of(first->panes.begin(), first->panes.end(), isThere)))
        m_live->setFirstView(*first);
    else if (m_fleet)
        awaitView(view.isEmpty() ? usual : view);
}

/// What desks share is not there at the start. Who has chosen a view meanwhile keeps that.
void MainWindow::awaitView(const QString& name)
{
    auto* waiting = new QObject(m_views);
    connect(m_views, &ViewList::changed, waiting, [this, waiting, name] {
        const DeckView* view = m_views->find(name);
        if (!view && m_live->viewName().isEmpty())
            return;
        if (m_live->viewName().isEmpty())
            m_live->showView(*view);
        waiting->deleteLater();
    });
}

/// Makes whoever keeps the second windows, and lets all live decks tell which of their cameras are recorded.
void MainWindow::openWindows()
{
    m_windows = new SecondWindows(m_cameras, m_hub, m_log, m_views, this);
    connect(m_windows, &SecondWindows::added, this, &MainWindow::equip);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this,
            [this] { QTimer::singleShot(0, this, &MainWindow::comeBack); });
    equip(m_live);
}

void MainWindow::equip(LiveTab* live)
{
    live->overlay()->setArchived(
        [this](const CameraRecord& camera) { return m_archive && m_archive->isRecorded(camera); });
    connect(m_archive, &ClientArchive::troubleChanged, live->overlay(), &PaneOverlay::updateAll);
}

void MainWindow::restorePlace()
{
    const QSettings settings;
    resize(1280, 800);
    restoreGeometry(settings.value(PlaceKey).toByteArray());
    m_across->restoreState(settings.value(AcrossKey).toByteArray());
    m_down->restoreState(settings.value(DownKey).toByteArray());
    if (isMaximized() || isFullScreen())
        return;
    const QScreen* screen = QGuiApplication::screenAt(geometry().center());
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    if (settings.contains(PlaceKey))
        setGeometry(fitted(geometry(), room));
    else
        resize(fitted(geometry(), room).size());
}

/// From where there is no screen any more.
void MainWindow::comeBack()
{
    if (!isMaximized() && !isFullScreen() && !QGuiApplication::screenAt(geometry().center()))
        setGeometry(fitted(geometry(), QGuiApplication::primaryScreen()->availableGeometry()));
}

void MainWindow::keepPlace() const
{
    QSettings settings;
    settings.setValue(PlaceKey, saveGeometry());
    settings.setValue(AcrossKey, m_across->saveState());
    settings.setValue(DownKey, m_down->saveState());
}

void MainWindow::takeView(const QString& name)
{
    m_tabs->setCurrentIndex(0);
    QString error;
    if (!m_views->setLast(name, &error))
        m_log->add(word("client"), error);
}
