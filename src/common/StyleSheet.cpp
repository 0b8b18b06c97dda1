#include "common/StyleSheet.h"

#include <QFile>

QString LoadStyleSheet(const QString& path, const QString& resourceDir)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll()).replace(QLatin1String(".*?"), resourceDir);
}
