#include "settings/Autostart.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

QString path()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart/" +
           QCoreApplication::applicationName() + ".desktop";
}

/// As the specification of desktop entries wants it: a quoted argument with backslashes for what is special
/// in it, itself in a value whose backslashes are doubled.
QByteArray quoted(QString argument)
{
    for (const char special : {'\\', '"', '`', '$'})
        argument.replace(QChar(special), QString("\\%1").arg(special));
    return QString("\"%1\"").arg(argument.replace('%', "%%").replace('\\', "\\\\")).toUtf8();
}

} // namespace

bool Autostart::isOn()
{
    return QFile::exists(path());
}

bool Autostart::set(bool on)
{
    if (on == isOn())
        return true;
    if (!on)
        return QFile::remove(path());
    QDir().mkpath(QFileInfo(path()).path());
    QSaveFile file(path());
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("[Desktop Entry]\nType=Application\nName=PaneDeck\nExec=" +
               quoted(QCoreApplication::applicationFilePath()) + "\n");
    return file.commit();
}
