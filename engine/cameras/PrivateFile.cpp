#include "cameras/PrivateFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

std::optional<QByteArray> readPrivateFile(const QString& path, qint64 mostBytes, QString* error)
{
    QFile file(path);
    const QFileInfo about(path);
    QString why;
    if (!about.isFile())
        why = "it is no file";
    else if (about.size() > mostBytes)
        why = "it is too large";
    else if (!file.open(QIODevice::ReadOnly))
        why = file.errorString();
    if (why.isEmpty())
        return file.readAll();
    *error = QString("cannot read %1: %2").arg(path, why);
    return std::nullopt;
}

bool writePrivateFile(const QString& path, const QByteArray& content, QString* error)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) &&
                           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                           file.write(content) == content.size() && file.commit();
    if (!isWritten)
        *error = QString("cannot write %1: %2").arg(path, file.errorString());
    return isWritten;
}

QString credentialFile(const QString& name, const QString& otherwise)
{
    const QString file = qEnvironmentVariable("CREDENTIALS_DIRECTORY") + '/' + name;
    return qEnvironmentVariableIsSet("CREDENTIALS_DIRECTORY") && QFileInfo::exists(file) ? file : otherwise;
}
