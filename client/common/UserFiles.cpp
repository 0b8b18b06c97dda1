#include "common/UserFiles.h"

#include "archive/FileNames.h"
#include "common/ClientSettings.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

namespace {

/// No camera's clock tells a time before 1980.
constexpr qint64 FirstMs = 315'532'800'000;

} // namespace

QString UserFiles::usualDirectory(Kind kind)
{
    const auto location =
        kind == Kind::Snapshot ? QStandardPaths::PicturesLocation : QStandardPaths::MoviesLocation;
    return QStandardPaths::writableLocation(location) + "/PaneDeck";
}

QString UserFiles::directory(Kind kind)
{
    const QString chosen = kind == Kind::Snapshot ? ClientSettings::load().snapshotDir : QString();
    const QString path = chosen.isEmpty() ? usualDirectory(kind) : chosen;
    QDir().mkpath(path);
    return path;
}

QString UserFiles::newPath(Kind kind, const QString& cameraName, qint64 wallMs)
{
    const QDir place(directory(kind));
    const QDateTime time =
        wallMs < FirstMs ? QDateTime::currentDateTime() : QDateTime::fromMSecsSinceEpoch(wallMs);
    const QString stem = fileNameOf(cameraName) + "-" + time.toString("yyyyMMdd-HHmmss");
    const QString suffix = kind == Kind::Snapshot ? ".png" : ".mkv";
    QString path = place.filePath(stem + suffix);
    for (int i = 2; QFile::exists(path); ++i)
        path = place.filePath(QString("%1-%2%3").arg(stem).arg(i).arg(suffix));
    return path;
}
