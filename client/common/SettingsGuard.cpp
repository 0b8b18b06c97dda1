#include "common/SettingsGuard.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

constexpr qint64 MostBytes = 1 << 20;

/// A value that begins with one "@", plain or escaped, is an object; the empty one and bytes are harmless.
bool hasObject(const QString& text)
{
    static const QRegularExpression object(
        R"([=,]\s*"?\s*(?:@(?!@|Invalid\(\)|ByteArray\()|\\x0*40(?![0-9A-Fa-f])|\\0*100(?![0-7])))");
    return object.match(text).hasMatch();
}

} // namespace

bool isSafeSettings(const QString& path)
{
    const QFileInfo about(path);
    if (!about.exists())
        return true;
    QFile file(path);
    if (!about.isFile() || about.size() > MostBytes || !file.open(QIODevice::ReadOnly))
        return false;
    // With its length: a zero byte ends neither this text nor what the toolkit reads of it.
    const QByteArray content = file.readAll();
    return !hasObject(QString::fromLatin1(content.constData(), content.size()));
}

QString setUnsafeSettingsAside()
{
    const QString path = QString("%1/%2/%3.conf")
                             .arg(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
                                  QCoreApplication::organizationName(), QCoreApplication::applicationName());
    if (isSafeSettings(path))
        return QString();
    QString aside = path + ".damaged";
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = QString("%1.damaged.%2").arg(path).arg(i);
    return QFile::rename(path, aside) ? aside : QString();
}
