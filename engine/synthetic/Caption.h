#pragma once

#include <QImage>

struct Frame;

/// The strip in a picture's upper left corner: a camera's name, the running clock, and a line that grows with
/// each second.
class Caption
{
public:
    explicit Caption(const QString& name) : m_name(name) {}

    /// Writes the strip as of `wallMs`, milliseconds since 1970, in local time, and tells where it will lie.
    QRect update(qint64 wallMs);
    void draw(Frame& frame, qint64 wallMs) const;

private:
    void write(qint64 second);

    QString m_name;
    qint64 m_second = -1;
    QImage m_strip;
};
