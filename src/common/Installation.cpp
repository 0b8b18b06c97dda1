#include "common/Installation.h"

#include <QCoreApplication>
#include <QDir>

namespace {

struct Places
{
    QString directory;
    QString writable;
};

Places& Chosen()
{
    static Places places;
    return places;
}

QString Root()
{
    const QString& chosen = Chosen().directory;
    return chosen.isEmpty() ? QCoreApplication::applicationDirPath() + "/.." : chosen;
}

} // namespace

void ChooseInstallation(const QString& directory, const QString& writableDirectory)
{
    Chosen() = {directory.isEmpty() ? QString() : QDir(directory).absolutePath(),
                writableDirectory.isEmpty() ? QString() : QDir(writableDirectory).absolutePath()};
}

QString InstallationDirectory(const QString& name)
{
    const QString path = QDir::cleanPath(Root() + "/" + name);
    return QDir(path).exists() ? path : QString();
}

QString ButtonDirectory()
{
    const QString directory = InstallationDirectory("Resources/buttons");
    return directory.isEmpty() ? QCoreApplication::applicationDirPath() : directory;
}

QString WritableDirectory()
{
    return Chosen().writable;
}
