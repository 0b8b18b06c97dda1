#include "archive/SegmentContent.h"

#include "archive/SegmentReader.h"

#include <QFile>

namespace {

constexpr qint64 BlockBytes = 1 << 20;

/// True if all of a file was read and no cluster of Matroska begins in it, so that it can't hold a picture.
bool hasNoCluster(const QString& path)
{
    const QByteArray mark("\x1f\x43\xb6\x75");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray tail;
    while (true) {
        const QByteArray block = file.read(BlockBytes);
        if (block.isEmpty())
            return file.error() == QFileDevice::NoError && file.atEnd();
        if ((tail + block).contains(mark))
            return false;
        tail = block.right(mark.size() - 1);
    }
}

} // namespace

SegmentContent contentOf(const QString& path)
{
    SegmentReader reader;
    QString error;
    if (reader.open({path, 0, 0}, &error, SegmentReader::Expect::Recording)) {
        if (const qint64 ms = reader.measure(); ms > 0)
            return {SegmentContent::Plays, ms, {}};
        error = errorText(reader.end());
    }
    const bool isEmpty = reader.end() == AVERROR_EOF || hasNoCluster(path);
    return {isEmpty ? SegmentContent::Empty : SegmentContent::Unreadable, 0, isEmpty ? QString() : error};
}
