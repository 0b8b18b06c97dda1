#include "panes/PaneNotice.h"

#include "common/EngineText.h"
#include "common/Words.h"
#include "panes/PaneStrip.h"
#include "source/VideoSource.h"

#include <QPainter>
#include <QTime>
#include <QTimerEvent>

namespace {

constexpr int CountMs = 500;
constexpr int Margin = 4;
constexpr int LargestLetters = 16;
constexpr int SmallestLetters = 9;
const QColor Veil(0, 0, 0, 150);
const QColor Ground(16, 20, 24);

/// The reason of a loss, and when the source is tried again; in brief only its cause and the time.
QString reasonOf(const VideoSource& source, bool inBrief)
{
    const QString reason = engineText(inBrief ? source.reason().section(": ", -1) : source.reason());
    if (source.state() != SourceState::Lost)
        return reason;
    const QString time = QTime::currentTime().addMSecs(source.retryMs()).toString("HH:mm:ss");
    return reason + '\n' + (inBrief ? time : word("again at %1").arg(time));
}

/// Sets the largest letters in which the text has room; false if even the smallest are too large.
bool fitLetters(QFont& letters, const QRect& room, int flags, const QString& text)
{
    for (int size = LargestLetters; size >= SmallestLetters; --size) {
        letters.setPixelSize(size);
        if (room.contains(QFontMetrics(letters).boundingRect(room, flags, text)))
            return true;
    }
    return false;
}

} // namespace

PaneNotice::PaneNotice(QWidget* picture) : PictureCover(picture) {}

void PaneNotice::follow(VideoSource* source, const QString& waiting)
{
    m_source = source;
    m_waiting = waiting;
    update();
}

QString PaneNotice::text(bool inBrief) const
{
    if (!m_source)
        return QString();
    if (m_source->state() != SourceState::Playing)
        return m_source->reason().isEmpty() ? m_waiting : reasonOf(*m_source, inBrief);
    return m_isDimmed ? word("no picture for %1 s").arg(m_source->frameAgeMs() / 1000) : QString();
}

void PaneNotice::update()
{
    const bool wasDimmed = m_isDimmed;
    m_isDimmed = m_source && m_source->isSilent();
    const QString text = this->text(false);
    if (m_isDimmed)
        m_timer.start(CountMs, this);
    else
        m_timer.stop();
    if (m_text == text && wasDimmed == m_isDimmed)
        return;
    m_text = text;
    m_brief = this->text(true);
    place();
    setVisible(!text.isEmpty() && picture());
    QWidget::update();
}

void PaneNotice::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        update();
}

void PaneNotice::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    constexpr int Flags = Qt::AlignCenter | Qt::TextWordWrap;
    QPainter painter(this);
    painter.fillRect(rect(), m_isDimmed ? Veil : Ground);
    const int strip = PaneStrip::heightFor(size());
    const QRect room = rect().adjusted(Margin, Margin, -Margin, -Margin - strip);
    QFont letters = font();
    const bool hasRoom = fitLetters(letters, room, Flags, m_text);
    if (!hasRoom)
        fitLetters(letters, room, Flags, m_brief);
    painter.setFont(letters);
    painter.setPen(Qt::white);
    painter.drawText(room, Flags, hasRoom ? m_text : m_brief);
}
