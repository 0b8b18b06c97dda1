#include "synthetic/Caption.h"

#include "decode/Frame.h"

#include <QDateTime>

#include <cstring>

namespace {

constexpr uchar LineColour[] = {255, 176, 32};

} // namespace

QRect Caption::update(qint64 wallMs)
{
    const qint64 second = wallMs / 1000;
    if (m_painter && second != m_second) {
        const QString time = QDateTime::fromSecsSinceEpoch(second).toString("yyyy-MM-dd hh:mm:ss");
        m_strip = m_painter(m_name, time).convertToFormat(QImage::Format_RGB888);
        m_second = second;
    }
    return m_strip.rect();
}

void Caption::draw(Frame& frame, qint64 wallMs) const
{
    const int width = qMin(m_strip.width(), frame.width);
    const int height = qMin(m_strip.height(), frame.height);
    for (int y = 0; y < height; ++y)
        std::memcpy(frame.row(y), m_strip.constScanLine(y), size_t(width) * 3);
    const int grown = int(wallMs % 1000) * width / 1000;
    for (int y = height - LineHeight; y >= 0 && y < height; ++y) {
        for (int x = 0; x < grown; ++x)
            std::memcpy(frame.row(y) + x * 3, LineColour, 3);
    }
}
