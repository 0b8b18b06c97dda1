#include "playback/CameraStrips.h"

#include "archive/DayColors.h"
#include "common/Words.h"
#include "playback/DayRows.h"
#include "playback/ScalePlace.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace {

constexpr int RowHeight = 19;
constexpr int StripHeight = 15;
constexpr int NameMargin = 4;
constexpr int MostNameWidth = 160;
constexpr int HandleWidth = 3;
constexpr int HandleReach = 6;
constexpr int DimAlpha = 140;
constexpr QRgb Line = qRgb(214, 30, 30);

int xOf(const QRect& day, int second)
{
    return day.left() + int(qint64(day.width()) * second / ScalePlace::SecondsOfDay);
}

} // namespace

CameraStrips::CameraStrips(const DayRows* rows, ScalePlace* place) : m_rows(rows), m_place(place)
{
    setObjectName("CameraStrips");
    setAccessibleName(word("Recordings of the cameras shown"));
    // Time runs from left to right in every language.
    setLayoutDirection(Qt::LeftToRight);
    setMouseTracking(true);
    connect(rows, &DayRows::rowsChanged, this, &CameraStrips::takeRows);
    connect(rows, &DayRows::contentChanged, this, qOverload<>(&QWidget::update));
    connect(place, &ScalePlace::changed, this, qOverload<>(&QWidget::update));
}

void CameraStrips::takeRows()
{
    setFixedHeight(sizeHint().height());
    update();
}

void CameraStrips::showStretch(int from, int to)
{
    m_from = from;
    m_to = to;
    if (from == to)
        m_handle = nullptr;
    update();
}

void CameraStrips::showSecond(int second)
{
    if (second == m_second)
        return;
    m_second = second;
    update();
}

QSize CameraStrips::sizeHint() const
{
    return {0, int(m_rows->rows().size()) * RowHeight};
}

QRect CameraStrips::rowRect(int row) const
{
    return {0, row * RowHeight + (RowHeight - StripHeight) / 2, width(), StripHeight};
}

int CameraStrips::rowAt(int y) const
{
    const int row = y / RowHeight;
    return y >= 0 && row < m_rows->rows().size() ? row : -1;
}

void CameraStrips::paintEvent(QPaintEvent*)
{
    const QRect all = m_place->day();
    if (all.isEmpty())
        return;
    const QRect day(mapFromGlobal(all.topLeft()), all.size());
    QPainter painter(this);
    for (int row = 0; row < m_rows->rows().size(); ++row) {
        paintRow(painter, row, day);
        paintName(painter, row);
    }
    paintStretch(painter, day);
    if (m_second < 0)
        return;
    painter.fillRect(xOf(day, m_second), 0, 1, height(), Line);
}

/// An alarm of a second is seen however narrow the day is: it goes over motion, and that over recording.
void CameraStrips::paintRow(QPainter& painter, int row, const QRect& day) const
{
    const DayPalette palette;
    const QRect strip = rowRect(row);
    painter.fillRect(strip, QColor(palette.empty));
    for (const QRgb color : {palette.recording, palette.motion, palette.alarm}) {
        for (const DayRun& run : m_rows->rows()[row].runs) {
            const int left = qMax(xOf(day, run.from), strip.left());
            const int right = qMin(qMax(xOf(day, run.to), xOf(day, run.from) + 1), strip.right() + 1);
            if (run.color == color && left < right)
                painter.fillRect(left, strip.top(), right - left, strip.height(), QColor(color));
        }
    }
    if (row != m_rows->activeRow())
        return;
    painter.setPen(QPen(this->palette().color(QPalette::WindowText), 1));
    painter.drawRect(strip.adjusted(0, 0, -1, -1));
}

/// What lies outside is dimmed, and the handles can be taken hold of.
void CameraStrips::paintStretch(QPainter& painter, const QRect& day) const
{
    if (m_from == m_to)
        return;
    const int left = xOf(day, m_from), right = qMax(xOf(day, m_to), left + 1);
    QColor dim = palette().color(QPalette::Window);
    dim.setAlpha(DimAlpha);
    painter.fillRect(0, 0, left, height(), dim);
    painter.fillRect(right, 0, width() - right, height(), dim);
    const QColor color = palette().color(QPalette::WindowText);
    painter.fillRect(left - HandleWidth, 0, HandleWidth, height(), color);
    painter.fillRect(right, 0, HandleWidth, height(), color);
}

/// Null if there is none. Of two that lie on each other the one outside of which the pointer is.
int* CameraStrips::handleAt(int globalX)
{
    const QRect day = m_place->day();
    if (m_from == m_to || day.isEmpty())
        return nullptr;
    const int toFrom = qAbs(globalX - xOf(day, m_from));
    const int toTo = qAbs(globalX - xOf(day, m_to));
    if (qMin(toFrom, toTo) > HandleReach)
        return nullptr;
    if (toFrom == toTo)
        return globalX < xOf(day, m_from) ? &m_from : &m_to;
    return toFrom < toTo ? &m_from : &m_to;
}

/// On a ground of its own, so that it can be read on any colour.
void CameraStrips::paintName(QPainter& painter, int row) const
{
    QFont font = this->font();
    font.setPixelSize(StripHeight - 4);
    font.setBold(row == m_rows->activeRow());
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QString name =
        metrics.elidedText(m_rows->rows()[row].camera.simplified(), Qt::ElideRight, MostNameWidth);
    QRect ground = rowRect(row).adjusted(1, 1, 0, -1);
    ground.setWidth(metrics.horizontalAdvance(name) + 2 * NameMargin);
    QColor color = palette().color(QPalette::Window);
    color.setAlpha(215);
    painter.fillRect(ground, color);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(ground, Qt::AlignCenter | Qt::TextSingleLine, name);
}

void CameraStrips::wheelEvent(QWheelEvent* event)
{
    m_place->turn(event->globalPosition().toPoint().x(), event->angleDelta());
    event->accept();
}

void CameraStrips::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_press = ScalePlace::globalOf(*event);
    m_isDragging = false;
    m_handle = handleAt(m_press.x());
    if (!m_handle)
        m_place->hold(m_press.x());
}

void CameraStrips::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint now = ScalePlace::globalOf(*event);
    if (!(event->buttons() & Qt::LeftButton)) {
        setCursor(handleAt(now.x()) ? Qt::SplitHCursor : Qt::ArrowCursor);
        Q_EMIT m_place->pointedAt(m_place->secondAt(now.x()));
        return;
    }
    if (m_handle) {
        const int second = m_place->secondAt(now.x());
        *m_handle = m_handle == &m_from ? qMin(second, m_to - 1) : qMax(second, m_from + 1);
        Q_EMIT m_place->pointedAt(*m_handle);
        Q_EMIT stretchDragged(m_from, m_to);
        update();
        return;
    }
    m_isDragging = m_isDragging || (now - m_press).manhattanLength() >= QApplication::startDragDistance();
    if (m_isDragging)
        m_place->drag(now.x());
}

void CameraStrips::leaveEvent(QEvent*)
{
    Q_EMIT m_place->left();
}

void CameraStrips::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (std::exchange(m_handle, nullptr))
        return;
    const int row = rowAt(event->pos().y());
    if (!m_isDragging && row >= 0)
        Q_EMIT rowChosen(row);
}

void CameraStrips::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT secondChosen(m_place->secondAt(ScalePlace::globalOf(*event).x()));
}
