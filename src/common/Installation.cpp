#include "common/Installation.h"

#include <QCoreApplication>
#include <QDir>

QString InstallationDirectory(const QString& name)
{
    const QString path = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../" + name);
    return QDir(path).exists() ? path : QString();
}

QString ButtonDirectory()
{
    const QString directory = InstallationDirectory("Resources/buttons");
    return directory.isEmpty() ? QCoreApplication::applicationDirPath() : directory;
}
