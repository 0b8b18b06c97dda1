#include "SkinFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

void GiveUp(const QString& message)
{
    std::fprintf(stderr, "skin_maker: %s\n", qPrintable(message));
    std::exit(1);
}

QString ReadText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        GiveUp("can't read " + path);
    return QString::fromUtf8(file.readAll());
}

void WriteText(const QString& path, const QString& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        GiveUp("can't write " + path);
}
