#include "DeckWall.h"

#include "frames/FramePainter.h"
#include "panes/QMyLabel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QStyleOptionFrame>

#include <cstring>

WallFrames::WallFrames() : m_pixels(COUNT, std::vector<uchar>(SIZE.width() * 3 * SIZE.height()))
{
    for (int i = 0; i < COUNT; ++i)
        std::memset(m_pixels[i].data(), 3 * i + 10, m_pixels[i].size());
}

QImage WallFrames::View(int index) const
{
    return QImage(m_pixels[index].data(), SIZE.width(), SIZE.height(), QImage::Format_RGB888);
}

DeckWall::DeckWall(const WallFrames& frames)
    : m_frames(frames), m_deck(nullptr, WND_TYPE_ALARM, WallFrames::COUNT)
{
    for (int i = 0; i < WallFrames::COUNT; ++i) {
        m_labels.append(static_cast<QMyLabel*>(m_deck.GetHWND(i)));
        m_labels.last()->installEventFilter(this);
    }
    m_deck.resize(1920, 1080);
    m_deck.show();
    m_deck.SetShowWndNo(WallFrames::COUNT);
    PaintPending();
}

void DeckWall::SetFrames(Painting painting)
{
    m_painting = painting;
    for (int i = 0; i < m_labels.size(); ++i) {
        m_deck.EnableRefresh(i, painting != IN_USE);
        m_labels[i]->setUpdatesEnabled(true);
        const ulong address = reinterpret_cast<ulong>(m_frames.View(i).constBits());
        m_labels[i]->slot_BufferChange(address, WallFrames::SIZE.width(), WallFrames::SIZE.height());
        m_labels[i]->setAttribute(Qt::WA_OpaquePaintEvent, painting == OWN);
        m_labels[i]->setUpdatesEnabled(painting != IN_USE);
    }
}

void DeckWall::SetOpaque(bool opaque)
{
    for (QMyLabel* label : m_labels)
        label->setAttribute(Qt::WA_OpaquePaintEvent, opaque);
}

void DeckWall::Repaint(Painting painting)
{
    m_painting = painting;
    for (QMyLabel* label : m_labels)
        label->update();
    PaintPending();
}

bool DeckWall::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return false;
    ++m_paints;
    QMyLabel* label = static_cast<QMyLabel*>(watched);
    if (m_painting == PLAIN) {
        QPainter painter(label);
        PaintScaled(painter, m_frames.View(m_labels.indexOf(label)), label->size());
        QStyleOptionFrame frame;
        frame.initFrom(label);
        label->style()->drawControl(QStyle::CE_ShapedFrame, &frame, &painter, label);
    }
    return m_painting != OWN;
}

void PaintPending()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}
