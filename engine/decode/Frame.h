#pragma once

#include <QImage>

#include <memory>
#include <vector>

struct AVFrame;

/// One picture: RGB888, each row padded to 4 bytes with nothing between, as a pane's label takes it.
struct Frame
{
    std::vector<uchar> buffer; ///< the rows, and some bytes behind them that a fast writer may overrun into
    int width = 0;
    int height = 0;
    qint64 pts = 0;    ///< place in the stream, microseconds
    qint64 wallMs = 0; ///< when it was taken, milliseconds since 1970
    QSize pictureSize; ///< that of the picture as it was decoded; empty if the frame has it
    std::shared_ptr<const AVFrame> picture; ///< as it was decoded, if the frame is smaller or larger
    quint64 serial = 0; ///< grows with each frame of a source; 0 for a buffer that holds no picture yet

    static int rowBytes(int width) { return (width * 3 + 3) & ~3; }
    int rowBytes() const { return rowBytes(width); }
    uchar* row(int y) { return buffer.data() + size_t(y) * size_t(rowBytes()); }
    const uchar* pixels() const { return buffer.data(); }
    QSize size() const { return {width, height}; }

    /// A view on the pixels, valid as long as the frame; copy() it to keep it.
    QImage image() const { return {pixels(), width, height, rowBytes(), QImage::Format_RGB888}; }
};

using FramePtr = std::shared_ptr<const Frame>;
