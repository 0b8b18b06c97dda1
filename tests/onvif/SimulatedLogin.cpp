#include "SimulatedDevice.h"

#include <QCryptographicHash>
#include <QRegularExpression>

namespace {

QByteArray md5(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
}

QByteArray part(const QByteArray& digest, const QByteArray& name)
{
    return QRegularExpression("\\b" + name + "=\"?([^\",]*)")
        .match(QString::fromLatin1(digest))
        .captured(1)
        .toLatin1();
}

bool isDigestGood(const QByteArray& line, const Habits& habits)
{
    const QByteArray first = md5(QString(habits.user + ":onvif:" + habits.password).toUtf8());
    const QByteArray second = md5("POST:" + part(line, "uri"));
    return part(line, "nonce") == SimulatedDevice::Nonce &&
           part(line, "response") == md5(first + ':' + SimulatedDevice::Nonce + ':' + part(line, "nc") + ':' +
                                         part(line, "cnonce") + ":auth:" + second);
}

} // namespace

bool SimulatedDevice::isSigned(const SoapNode& envelope, const QByteArray& head)
{
    if (habits.user.isEmpty())
        return true;
    const QByteArray line = header(head, "Authorization");
    if (habits.authentication == "basic")
        return line == "Basic " + QString(habits.user + ':' + habits.password).toUtf8().toBase64();
    if (habits.authentication == "digest")
        return line.startsWith("Digest") && isDigestGood(line, habits);
    return hasToken(envelope.at("Header/Security/UsernameToken"));
}

/// A digest of the password by a time near the device's own. That a token comes but once is not asked for:
/// Debian's onvif-tools gives the same one to all calls of a millisecond.
bool SimulatedDevice::hasToken(const SoapNode& token)
{
    if (habits.authentication == "text")
        return token.at("Username").text == habits.user && token.at("Password").text == habits.password &&
               token.at("Password").attribute("Type").endsWith("#PasswordText");
    const QByteArray nonce = QByteArray::fromBase64(token.at("Nonce").text.toUtf8());
    const QString created = token.at("Created").text;
    const QByteArray digest = QCryptographicHash::hash(nonce + created.toUtf8() + habits.password.toUtf8(),
                                                       QCryptographicHash::Sha1);
    const qint64 age = QDateTime::fromString(created, Qt::ISODate).secsTo(now());
    return token.at("Username").text == habits.user && qAbs(age) < 30 &&
           token.at("Password").text.toUtf8() == digest.toBase64();
}
