#include "common/UserFiles.h"

#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

QString UserFiles::Directory(Kind kind)
{
    const auto place =
        kind == Kind::Snapshot ? QStandardPaths::PicturesLocation : QStandardPaths::MoviesLocation;
    const QString path = QStandardPaths::writableLocation(place) + "/PaneDeck";
    QDir().mkpath(path);
    return path;
}

QString UserFiles::NewPath(Kind kind, const QString& cameraName)
{
    const QDir directory(Directory(kind));
    const QString name = QString(cameraName).replace(QRegularExpression("[^\\w]+"), "-");
    const QString stem = name + "-" + QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
    const QString suffix = kind == Kind::Snapshot ? ".png" : ".mkv";
    QString path = directory.filePath(stem + suffix);
    for (int i = 2; QFile::exists(path); ++i)
        path = directory.filePath(QString("%1-%2%3").arg(stem).arg(i).arg(suffix));
    return path;
}
