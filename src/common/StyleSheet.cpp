#include "common/StyleSheet.h"

#include "layouts/CSplitCatalog.h"

#include <QFile>

QString LoadStyleSheet(const QString& fileName)
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    QFile file(catalog->qssDir + fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll()).replace(QLatin1String(".*?"), catalog->resourceDir);
}
