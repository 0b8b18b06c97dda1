#include "playback/DayRows.h"

#include "archive/DayColors.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/VisibleTimer.h"
#include "panes/DeckStreams.h"
#include "panes/PaneTracks.h"
#include "playback/DayScale.h"

#include <CPaneDeck.h>

#include <algorithm>

namespace {

constexpr int LookMs = 250;

QVector<DayRun> runsOf(const DayTable& table)
{
    QVector<DayRun> runs;
    const QRgb empty = DayPalette().empty;
    for (int second = 0; second < int(table.size()); ++second) {
        const QRgb color = table[size_t(second)];
        if (!runs.isEmpty() && runs.last().to == second && runs.last().color == color)
            ++runs.last().to;
        else if (color != empty)
            runs.append({second, second + 1, color});
    }
    return runs;
}

} // namespace

DayRows::DayRows(CPaneDeck* deck, DeckStreams* streams, const PaneTracks* tracks, const DayScale* scale,
                 const ClientArchive* archive, QWidget* tab)
    : QObject(tab), m_deck(deck), m_streams(streams), m_tracks(tracks), m_scale(scale), m_archive(archive)
{
    connect(new VisibleTimer(tab, LookMs), &VisibleTimer::timeout, this, &DayRows::look);
    connect(archive, &ClientArchive::changed, this, &DayRows::takeArchive);
    // At once, so that the scale doesn't go away under a pointer that is on its way to it.
    connect(streams, &DeckStreams::placed, this, &DayRows::look);
}

int DayRows::activeRow() const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].camera == m_active)
            return row;
    }
    return -1;
}

QVector<DayRow> DayRows::shownRows() const
{
    QVector<DayRow> rows;
    for (int pane = 0; pane < m_streams->paneCount(); ++pane) {
        const CameraRecord* camera = m_tracks->isFile(pane) ? nullptr : m_streams->cameraAt(pane);
        const auto isSame = [camera](const DayRow& row) { return row.camera == camera->name; };
        if (camera && m_deck->PaneWidget(pane)->isVisible() && std::none_of(rows.begin(), rows.end(), isSame))
            rows.append({camera->name, pane, {}, {}});
    }
    return rows;
}

void DayRows::look()
{
    const int pane = m_deck->GetCurrentWnd();
    const CameraRecord* camera = m_tracks->isFile(pane) ? nullptr : m_streams->cameraAt(pane);
    const QString active = camera ? camera->name : QString();
    const QDate day = QDateTime::fromMSecsSinceEpoch(m_scale->dayBegin()).date();
    QVector<DayRow> rows = shownRows();
    const auto areSame = [](const DayRow& one, const DayRow& other) {
        return one.camera == other.camera && one.pane == other.pane;
    };
    const bool isSame =
        day == m_day && std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), areSame);
    if (isSame && active == m_active)
        return;
    m_active = active;
    if (!isSame) {
        m_day = day;
        m_rows.swap(rows);
        m_unread.clear();
        for (const DayRow& row : qAsConst(m_rows))
            readLater(row.camera);
    }
    Q_EMIT rowsChanged();
}

void DayRows::takeArchive(const QString& camera)
{
    for (const DayRow& row : qAsConst(m_rows)) {
        if (camera.isEmpty() || row.camera == camera)
            readLater(row.camera);
    }
}

void DayRows::readLater(const QString& camera)
{
    if (m_unread.isEmpty())
        QMetaObject::invokeMethod(this, &DayRows::readNext, Qt::QueuedConnection);
    if (!m_unread.contains(camera))
        m_unread.append(camera);
}

void DayRows::readNext()
{
    if (m_unread.isEmpty())
        return;
    const QStringList cameras = m_unread.mid(0, m_archive->camerasAtOnce());
    m_unread.erase(m_unread.begin(), m_unread.begin() + cameras.size());
    const auto times = m_archive->times(cameras, m_scale->dayBegin(), m_scale->dayEnd());
    for (DayRow& row : m_rows) {
        const auto found = times.find(row.camera);
        if (found == times.end())
            continue;
        row.runs = runsOf(dayColors(m_day, QTimeZone::systemTimeZone(), found->segments, found->spans));
        row.marks = found->spans;
    }
    if (!times.isEmpty())
        Q_EMIT contentChanged();
    if (!m_unread.isEmpty())
        QMetaObject::invokeMethod(this, &DayRows::readNext, Qt::QueuedConnection);
}
