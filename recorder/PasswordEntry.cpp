#include "PasswordEntry.h"

#include "Recorder.h"
#include "RecorderOptions.h"
#include "cameras/CameraFile.h"
#include "cameras/CameraPasswords.h"
#include "fleet/FleetCameras.h"
#include "fleet/FleetDatabase.h"

#include <QCoreApplication>
#include <QFile>

namespace {

/// The id of the camera of this name, or id; empty if there is none, which `error` tells.
QString idInFleet(const FleetAddress& address, const QString& name, QString* error)
{
    FleetDatabase database(address);
    const auto cameras = database.open() ? FleetCameras::read(database) : std::nullopt;
    *error = cameras ? "there is no camera " + name : "the shared index: " + database.reason();
    for (const LeasedCamera& camera : cameras.value_or(QVector<LeasedCamera>())) {
        if (camera.name == name || camera.id == name)
            return camera.id;
    }
    return QString();
}

QString idInFile(const QString& path, const QString& name, QString* error)
{
    *error = "there is no camera " + name;
    const auto cameras = CameraFile(path).read(error);
    for (const CameraDescription& camera : cameras.value_or(QVector<CameraDescription>())) {
        if (camera.name == name || camera.id == name)
            return camera.id;
    }
    return QString();
}

QString readPassword()
{
    constexpr qint64 Longest = 4096;
    QFile input;
    QString line = input.open(stdin, QIODevice::ReadOnly) ? QString::fromUtf8(input.readLine(Longest)) : "";
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return line;
}

} // namespace

int keepPassword(const RecorderOptions& options)
{
    QString error;
    const QString id = options.index ? idInFleet(*options.index, options.passwordOf, &error)
                                     : idInFile(options.camerasPath, options.passwordOf, &error);
    const QString password = id.isEmpty() ? QString() : readPassword();
    if (!id.isEmpty() && password.isEmpty())
        error = "no password came";
    if (password.isEmpty()) {
        tell(error);
        return 1;
    }
    CameraPasswords passwords(options.passwordsPath, nullptr, options.wherePasswordsAre());
    // What is kept in a file is told at once.
    QObject::connect(
        &passwords, &CameraPasswords::kept, &passwords, [] { QCoreApplication::exit(0); },
        Qt::QueuedConnection);
    QObject::connect(
        &passwords, &CameraPasswords::failed, &passwords,
        [](const QString& line) {
            tell(line);
            QCoreApplication::exit(1);
        },
        Qt::QueuedConnection);
    passwords.keep(id, password);
    return QCoreApplication::exec();
}
