#pragma once

#include <QImage>

#include <functional>

struct Frame;

/// Paints a camera's name and the time into a strip. The engine has no fonts: whoever has them paints.
/// The strip is opaque, and its lowest Caption::LineHeight rows are drawn over. Called in the sources'
/// threads, several at a time; without a painter, or where it gives no picture, there is no strip.
using CaptionPainter = std::function<QImage(const QString& name, const QString& time)>;

/// The strip in a picture's upper left corner: a camera's name, the running clock, and a line that grows with
/// each second.
class Caption
{
public:
    static constexpr int LineHeight = 3;

    Caption(const QString& name, CaptionPainter painter) : m_name(name), m_painter(std::move(painter)) {}

    /// Writes the strip as of `wallMs`, milliseconds since 1970, in local time, and tells where it will lie.
    QRect update(qint64 wallMs);
    void draw(Frame& frame, qint64 wallMs) const;

private:
    QString m_name;
    CaptionPainter m_painter;
    qint64 m_second = -1;
    QImage m_strip;
};
