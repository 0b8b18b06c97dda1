#include "common/ClientInstallation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// Where it is installed, or else as the build tree has it.
QString root()
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString shared = program + "/../share/panedeck";
    return QDir::cleanPath(QFileInfo(shared).isDir() ? shared : program + "/..");
}

/// Whether the user's layouts can be kept there; they are written beside themselves first.
bool canKeepLayouts(const QString& directory)
{
    const QFileInfo layouts(directory + "/SplitInfo.xml");
    return QFileInfo(directory).isWritable() && (!layouts.exists() || layouts.isWritable());
}

} // namespace

QString ClientInstallation::path(const QString& name)
{
    return QDir(root()).filePath(name);
}

QString ClientInstallation::writableDirectory()
{
    if (canKeepLayouts(path("Organization")))
        return QString();
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
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
