#include "playback/DayOverview.h"

#include "archive/DayColors.h"
#include "common/Words.h"
#include "playback/CameraStrips.h"
#include "playback/DayField.h"
#include "playback/DayRows.h"
#include "playback/DayScale.h"
#include "playback/MarkList.h"
#include "playback/PlaybackBar.h"
#include "playback/PlaybackIcons.h"
#include "playback/PlaybackNavigator.h"
#include "playback/PlaybackOutput.h"
#include "playback/RecordedDays.h"
#include "playback/ScalePlace.h"
#include "playback/ScalePreview.h"
#include "playback/ScaleTip.h"

#include <CPaneDeck.h>

#include <QCalendarWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>

namespace {

/// More are reached by scrolling: the pictures come first.
constexpr int MostStrips = 6;
/// A narrower tab has no room for the list.
constexpr int LeastWidth = 800;

} // namespace

DayOverview::DayOverview(const Parts& parts, QWidget* tab)
    : QObject(tab), m_parts(parts), m_tab(tab),
      m_rows(new DayRows(parts.deck, parts.streams, parts.tracks, parts.scale, parts.archive, tab)),
      m_scroll(new QScrollArea)
{
    auto* place = new ScalePlace(parts.deck);
    auto* tip = new ScaleTip(place, tab);
    new ScalePreview(place, tip, m_rows, parts.scale, parts.archive);
    connect(parts.deck, &CPaneDeck::sig_TimerSliderReleased, tip, &QWidget::hide);
    new RecordedDays(parts.scale->field()->calendarWidget(), parts.archive);
    m_strips = new CameraStrips(m_rows, place);
    connect(m_strips, &CameraStrips::rowChosen, this, &DayOverview::chooseRow);
    connect(m_strips, &CameraStrips::secondChosen, this,
            [this](int second) { m_parts.navigator->seekRecordings(m_parts.scale->momentAt(second)); });
    connect(m_rows, &DayRows::rowsChanged, this, &DayOverview::fitStrips);
    connect(m_rows, &DayRows::rowsChanged, this, &DayOverview::showStretch);
    connect(parts.output, &PlaybackOutput::stretchChanged, this, [this](qint64 fromMs, qint64 toMs) {
        m_fromMs = fromMs;
        m_toMs = toMs;
        showStretch();
    });
    connect(m_strips, &CameraStrips::stretchDragged, this, [this](int from, int to) {
        m_fromMs = from == secondOf(m_fromMs) ? m_fromMs : m_parts.scale->momentAt(from);
        m_toMs = to == secondOf(m_toMs) ? m_toMs : m_parts.scale->momentAt(to);
        m_parts.output->setStretch(m_fromMs, m_toMs);
    });
}

QHBoxLayout* DayOverview::layOut(PlaybackBar* bar)
{
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(m_strips);
    fitStrips();
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(m_parts.deck, 1);
    column->addWidget(m_scroll);
    auto* marks = new MarkList(m_rows, m_parts.archive);
    connect(marks, &MarkList::chosen, this, &DayOverview::chooseMark);
    bar->addPart("strips", PlaybackIcons::strips(), word("A strip for each camera"), m_scroll);
    bar->addPart("marks", PlaybackIcons::list(), word("Motion and alarms of the day"), marks);
    m_bar = bar;
    m_tab->installEventFilter(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addLayout(column, 1);
    row->addWidget(marks);
    return row;
}

bool DayOverview::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        m_bar->allowPart("marks", m_tab->width() >= LeastWidth);
    return QObject::eventFilter(watched, event);
}

void DayOverview::fitStrips()
{
    const int rows = m_rows->rows().size();
    const int all = m_strips->sizeHint().height();
    m_scroll->setFixedHeight(rows > MostStrips ? all * MostStrips / rows : all);
}

/// On the scale's day, or just beyond it.
int DayOverview::secondOf(qint64 ms) const
{
    if (ms < m_parts.scale->dayBegin())
        return -ScalePlace::SecondsOfDay;
    return ms < m_parts.scale->dayEnd() ? secondOfDay(ms, QTimeZone::systemTimeZone())
                                        : 2 * ScalePlace::SecondsOfDay;
}

void DayOverview::showStretch()
{
    if (m_fromMs == m_toMs)
        m_strips->showStretch(0, 0);
    else
        m_strips->showStretch(secondOf(m_fromMs), secondOf(m_toMs));
}

void DayOverview::showMoment(qint64 ms)
{
    m_strips->showSecond(ms < 0 ? -1 : secondOfDay(ms, QTimeZone::systemTimeZone()));
}

void DayOverview::chooseRow(int row)
{
    if (row < m_rows->rows().size())
        m_parts.deck->SetActiveWnd(m_rows->rows()[row].pane);
}

void DayOverview::chooseMark(int pane, qint64 ms)
{
    m_parts.deck->SetActiveWnd(pane);
    m_parts.navigator->seekRecordings(ms);
}
