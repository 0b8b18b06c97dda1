#include "archive/Archive.h"
#include "engine/TestVideo.h"

#include <QFileInfo>

#include <cstdio>

/// make_archive DIRECTORY CAMERA START: a minute of a camera from that second since 1970 on, in which
/// something moves after 20 seconds for 5.
int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: make_archive DIRECTORY CAMERA START\n", stderr);
        return 2;
    }
    constexpr qint64 LengthMs = 60'000;
    const QString camera = QString::fromLocal8Bit(argv[2]);
    const qint64 startMs = 1000 * QString(argv[3]).toLongLong();
    TestVideo::Recipe recipe;
    recipe.pictures = int(LengthMs / TestVideo::StepMs);
    recipe.size = {320, 240};
    recipe.keyDistance = TestVideo::PicturesPerSecond;
    Archive archive(QString::fromLocal8Bit(argv[1]));
    QString error;
    const QString part = archive.open(&error) ? archive.paths()->beginPart(camera, startMs) : QString();
    if (part.isEmpty() || !TestVideo::write(part, recipe))
        return 1;
    archive.paths()->endPart(part);
    archive.finish({part, camera, startMs, startMs + LengthMs});
    archive.setSpans({{camera, {Span::Motion, startMs + 20'000, startMs + 25'000}}});
    archive.flush();
    archive.close();
    return QFileInfo::exists(ArchivePaths::wholePath(part)) ? 0 : 1;
}
