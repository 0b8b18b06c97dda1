#include "common/ClientSkin.h"

#include "common/ClientInstallation.h"
#include "common/SettingsGuard.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMetaEnum>
#include <QPalette>
#include <QSettings>

namespace {

QPalette paletteOf(const QString& file)
{
    QPalette palette = QApplication::palette();
    if (!isSafeSettings(file))
        return palette;
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup("palette");
    const QMetaEnum roles = QMetaEnum::fromType<QPalette::ColorRole>();
    for (const QString& key : settings.childKeys()) {
        bool known = false;
        const int role = roles.keyToValue(key.toLatin1(), &known);
        if (known)
            palette.setColor(QPalette::ColorRole(role), QColor(settings.value(key).toString()));
    }
    return palette;
}

QString sheetOf(const QString& directory, const QString& name)
{
    QFile file(directory + "/Qss/" + name);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll()).replace(".*?", directory);
}

} // namespace

int configuredStyle()
{
    const QString path = ClientInstallation::path("Organization/Config.ini");
    if (!isSafeSettings(path))
        return 0;
    const QSettings settings(path, QSettings::IniFormat);
    return settings.value("style/style").toInt();
}

void applyClientSkin(int style)
{
    if (style != 1 && style != 2)
        return;
    const QString directory = ClientInstallation::path(style == 1 ? "ResourcesBlank" : "ResourcesWhite");
    QApplication::setPalette(paletteOf(directory + "/Qss/clientpalette.ini"));
    QString sheet = sheetOf(directory, "clientsheet.qss");
    if (QApplication::isRightToLeft())
        sheet += sheetOf(directory, "mirroredsheet.qss");
    qApp->setStyleSheet(sheet);
}
