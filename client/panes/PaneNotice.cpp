#include "panes/PaneNotice.h"

#include "common/Words.h"
#include "source/VideoSource.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int CountMs = 500;
constexpr int Margin = 4;
const QColor Veil(0, 0, 0, 150);
const QColor Plate(0, 0, 0, 170);
const QColor LateText(255, 200, 60);

} // namespace

PaneNotice::PaneNotice(QWidget* picture) : QWidget(picture->parentWidget()), m_picture(picture)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    picture->installEventFilter(this);
}

void PaneNotice::follow(VideoSource* source)
{
    m_source = source;
    update();
}

QString PaneNotice::text() const
{
    if (!m_source || m_source->state() != SourceState::Playing)
        return QString();
    if (m_source->isSilent())
        return word("no picture for %1 s").arg(m_source->frameAgeMs() / 1000);
    return m_source->isLate() ? word("delayed") : QString();
}

void PaneNotice::update()
{
    const QString text = this->text();
    m_isDimmed = m_source && m_source->isSilent();
    if (m_isDimmed)
        m_timer.start(CountMs, this);
    else
        m_timer.stop();
    if (m_text == text)
        return;
    m_text = text;
    if (m_picture)
        setGeometry(m_picture->geometry());
    raise();
    setVisible(!text.isEmpty() && m_picture);
    QWidget::update();
}

bool PaneNotice::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_picture && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        setGeometry(m_picture->geometry());
    return QWidget::eventFilter(watched, event);
}

void PaneNotice::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        update();
}

void PaneNotice::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    if (m_isDimmed) {
        painter.fillRect(rect(), Veil);
        painter.setPen(Qt::white);
        painter.drawText(rect().adjusted(Margin, Margin, -Margin, -Margin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_text);
        return;
    }
    const QSize size = fontMetrics().size(Qt::TextSingleLine, m_text) + QSize(2 * Margin, Margin);
    QRect plate(QPoint(), size);
    plate.moveBottomLeft(rect().bottomLeft() + QPoint(Margin, -Margin));
    painter.fillRect(plate, Plate);
    painter.setPen(LateText);
    painter.drawText(plate, Qt::AlignCenter, m_text);
}
