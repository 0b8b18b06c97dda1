#include "common/ClientInstallation.h"

#include <QCoreApplication>
#include <QFileInfo>

QString ClientInstallation::path(const QString& name)
{
    return QCoreApplication::applicationDirPath() + "/../" + name;
}

QStringList ClientInstallation::missing()
{
    QStringList names;
    for (const char* name : {"Organization", "Resources", "languages"}) {
        if (!QFileInfo(path(name)).isDir())
            names.append(name);
    }
    return names;
}
