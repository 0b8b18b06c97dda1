#include "panes/PaneStrip.h"

#include <QPainter>
#include <QPainterPath>

#include <tuple>

namespace {

constexpr int SmallWidth = 240; ///< of a picture that has room for small letters only
constexpr int LetterSize = 12;
constexpr int SmallLetterSize = 10;
constexpr int Margin = 3;
const QColor Ground(16, 20, 24);
const QColor Ink(240, 240, 240);
const QColor Alert(255, 200, 60);
const QColor Recording(255, 70, 60);

int letterSize(const QSize& picture)
{
    return picture.width() < SmallWidth ? SmallLetterSize : LetterSize;
}

void paintNote(QPainter& painter, const QRectF& box)
{
    const double r = box.width() / 5;
    QPainterPath note;
    note.addEllipse(QPointF(box.left() + r, box.bottom() - r), r, r * 0.8);
    note.addRect(QRectF(box.left() + 1.6 * r, box.top(), r * 0.5, box.height() - r));
    note.addRect(QRectF(box.left() + 1.6 * r, box.top(), 2.4 * r, r));
    painter.fillPath(note.simplified(), Ink);
}

} // namespace

bool PaneLabel::operator==(const PaneLabel& other) const
{
    return std::tie(name, isRecorded, isArchived, isHeard, state) ==
           std::tie(other.name, other.isRecorded, other.isArchived, other.isHeard, other.state);
}

PaneStrip::PaneStrip(QWidget* picture) : PictureCover(picture)
{
    setObjectName("PaneStrip");
    setAttribute(Qt::WA_OpaquePaintEvent);
}

int PaneStrip::heightFor(const QSize& picture)
{
    return letterSize(picture) + 2 * Margin;
}

void PaneStrip::setLabel(const PaneLabel& label)
{
    if (m_label == label)
        return;
    m_label = label;
    place();
    setVisible(!label.isEmpty() && picture());
    update();
}

/// A mark is as wide as the letters are high, and the space behind it is a margin.
int PaneStrip::marksWidth() const
{
    const int marks = (m_label.isRecorded || m_label.isArchived ? 1 : 0) + (m_label.isHeard ? 1 : 0);
    return marks * (letterSize(picture()->size()) + Margin);
}

void PaneStrip::place()
{
    if (!picture() || m_label.isEmpty())
        return;
    const QRect room = picture()->geometry();
    QFont letters = font();
    letters.setPixelSize(letterSize(room.size()));
    setFont(letters);
    const QString text =
        m_label.name + (m_label.name.isEmpty() || m_label.state.isEmpty() ? "" : "  ") + m_label.state;
    const int wanted = marksWidth() + fontMetrics().horizontalAdvance(text) + 3 * Margin;
    QRect strip(0, 0, qMin(wanted, room.width()), qMin(heightFor(room.size()), room.height()));
    strip.moveBottomLeft(room.bottomLeft());
    if (layoutDirection() == Qt::RightToLeft)
        strip.moveBottomRight(room.bottomRight());
    setGeometry(strip);
}

void PaneStrip::paintMarks(QPainter& painter, int x) const
{
    const int size = font().pixelSize();
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF box(x, (height() - size) / 2.0, size, size);
    if (m_label.isRecorded || m_label.isArchived) {
        const double ring = size / 6.0;
        painter.setPen(QPen(Recording, ring));
        painter.setBrush(m_label.isRecorded ? QBrush(Recording) : QBrush(Qt::NoBrush));
        painter.drawEllipse(box.adjusted(ring, ring, -ring, -ring));
        box.translate(size + Margin, 0);
    }
    if (m_label.isHeard)
        paintNote(painter, box.adjusted(1, 1, -1, -1));
}

/// The state wins over the name where there is no room for both.
void PaneStrip::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.fillRect(rect(), Ground);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int marks = marksWidth();
    paintMarks(painter, isMirrored ? width() - marks : Margin);
    QRect room = rect().adjusted(Margin, 0, -Margin, 0);
    room = isMirrored ? room.adjusted(0, 0, -marks, 0) : room.adjusted(marks, 0, 0, 0);
    const QFontMetrics metrics = painter.fontMetrics();
    const QString state = metrics.elidedText(m_label.state, Qt::ElideRight, room.width());
    const int stateWidth = state.isEmpty() ? 0 : metrics.horizontalAdvance(state) + 2 * Margin;
    const QString name = metrics.elidedText(m_label.name, Qt::ElideRight, room.width() - stateWidth);
    painter.setPen(Ink);
    const auto leading = Qt::AlignVCenter | (isMirrored ? Qt::AlignRight : Qt::AlignLeft);
    const auto trailing = Qt::AlignVCenter | (isMirrored ? Qt::AlignLeft : Qt::AlignRight);
    painter.drawText(room, int(leading | Qt::AlignAbsolute | Qt::TextSingleLine), name);
    painter.setPen(Alert);
    painter.drawText(room, int(trailing | Qt::AlignAbsolute | Qt::TextSingleLine), state);
}
