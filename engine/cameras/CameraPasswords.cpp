#include "cameras/CameraPasswords.h"

#include "cameras/PrivateFile.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <keychain.h>

namespace {

constexpr qint64 MostBytes = 4 << 20;
constexpr int Version = 1;
constexpr char VersionKey[] = "version";
constexpr char PasswordsKey[] = "passwords";
const QLatin1String Service("PaneDeck");

/// Asked without a session, D-Bus would start one of its own.
bool hasSession()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

QString keyOf(const QString& id)
{
    return "camera " + id;
}

} // namespace

CameraPasswords::CameraPasswords(const QString& path, QObject* parent, Where where)
    : QObject(parent), m_path(path), m_where(where)
{
}

bool CameraPasswords::hasKeyring() const
{
    return m_where == Where::Keyring && hasSession();
}

QString CameraPasswords::pathBeside(const QString& camerasPath)
{
    return QFileInfo(camerasPath).path() + "/passwords.json";
}

void CameraPasswords::look(const QStringList& ids)
{
    QHash<QString, QString> passwords;
    QString error;
    if (!read(&passwords, &error))
        Q_EMIT failed(error);
    for (const QString& id : ids) {
        if (passwords.contains(id) || !hasKeyring())
            Q_EMIT found(id, passwords.value(id));
        else
            lookInKeyring(id);
    }
}

void CameraPasswords::lookInKeyring(const QString& id)
{
    auto* job = new QKeychain::ReadPasswordJob(Service, this);
    job->setKey(keyOf(id));
    connect(job, &QKeychain::Job::finished, this, [this, id, job] {
        Q_EMIT found(id, job->error() == QKeychain::NoError ? job->textData() : QString());
    });
    job->start();
}

void CameraPasswords::keep(const QString& id, const QString& password)
{
    if (!hasKeyring()) {
        keepInFile(id, password);
        return;
    }
    if (password.isEmpty()) {
        auto* job = new QKeychain::DeletePasswordJob(Service, this);
        job->setKey(keyOf(id));
        job->start();
        keepInFile(id, password);
        return;
    }
    auto* job = new QKeychain::WritePasswordJob(Service, this);
    job->setKey(keyOf(id));
    job->setTextData(password);
    connect(job, &QKeychain::Job::finished, this, [this, id, password, job] {
        keepInFile(id, job->error() == QKeychain::NoError ? QString() : password);
    });
    job->start();
}

void CameraPasswords::keepInFile(const QString& id, const QString& password)
{
    QHash<QString, QString> passwords;
    QString error;
    const bool isRead = read(&passwords, &error);
    if (isRead && passwords.value(id) == password) {
        Q_EMIT kept(id);
        return;
    }
    if (password.isEmpty())
        passwords.remove(id);
    else
        passwords.insert(id, password);
    QJsonObject object;
    for (auto it = passwords.cbegin(); it != passwords.cend(); ++it)
        object.insert(it.key(), it.value());
    const QByteArray content = QJsonDocument({{VersionKey, Version}, {PasswordsKey, object}}).toJson();
    if (isRead && writePrivateFile(m_path, content, &error))
        Q_EMIT kept(id);
    else
        Q_EMIT failed(error);
}

bool CameraPasswords::read(QHash<QString, QString>* passwords, QString* error) const
{
    if (!QFileInfo::exists(m_path))
        return true;
    const auto content = readPrivateFile(m_path, MostBytes, error);
    if (!content)
        return false;
    const QJsonObject root = QJsonDocument::fromJson(*content).object();
    if (root.value(VersionKey).toDouble() != Version || !root.value(PasswordsKey).isObject()) {
        *error = QString("cannot read %1: %2").arg(m_path, "it is of another version");
        return false;
    }
    const QJsonObject object = root.value(PasswordsKey).toObject();
    for (auto it = object.begin(); it != object.end(); ++it)
        passwords->insert(it.key(), it.value().toString());
    return true;
}
