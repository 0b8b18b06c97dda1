#include "common/RelayLogin.h"

#include "cameras/CameraFile.h"
#include "cameras/PrivateFile.h"
#include "cameras/RelayAccess.h"

#include <QFileInfo>

namespace {

QString path()
{
    return QFileInfo(CameraFile::userPath()).path() + "/relay";
}

} // namespace

std::optional<Login> RelayLogin::load(QString* error)
{
    if (!QFileInfo::exists(path()))
        return std::nullopt;
    const auto logins = RelayAccess::readLogins(path(), error);
    return logins ? std::make_optional(logins->first()) : std::nullopt;
}

bool RelayLogin::keep(const Login& login, QString* error)
{
    if (!login.user.isEmpty())
        return writePrivateFile(path(), (login.user + ':' + login.password + '\n').toUtf8(), error);
    QFile file(path());
    if (!file.exists() || file.remove())
        return true;
    *error = QString("cannot write %1: %2").arg(path(), file.errorString());
    return false;
}
