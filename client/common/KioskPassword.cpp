#include "common/KioskPassword.h"

#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QSettings>

namespace {

constexpr int Rounds = 100'000;
constexpr int SaltWords = 4;
constexpr int KeyBytes = 32;
constexpr char SaltKey[] = "kiosk/salt";
constexpr char HashKey[] = "kiosk/hash";

QByteArray hashOf(const QString& password, const QByteArray& salt)
{
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, password.toUtf8(), salt, Rounds,
                                              KeyBytes)
        .toHex();
}

QByteArray newSalt()
{
    quint32 words[SaltWords];
    QRandomGenerator::system()->fillRange(words);
    return QByteArray(reinterpret_cast<const char*>(words), sizeof(words)).toHex();
}

/// Takes as long wherever they differ.
bool isSame(const QByteArray& one, const QByteArray& other)
{
    int difference = one.size() ^ other.size();
    for (int i = 0; i < qMin(one.size(), other.size()); ++i)
        difference |= one.at(i) ^ other.at(i);
    return difference == 0;
}

} // namespace

bool KioskPassword::isSet()
{
    return !QSettings().value(HashKey).toString().isEmpty();
}

bool KioskPassword::matches(const QString& password)
{
    const QSettings settings;
    const QByteArray salt = settings.value(SaltKey).toString().toLatin1();
    return isSet() && isSame(hashOf(password, salt), settings.value(HashKey).toString().toLatin1());
}

void KioskPassword::set(const QString& password)
{
    QSettings settings;
    if (password.isEmpty()) {
        settings.remove("kiosk");
        return;
    }
    const QByteArray salt = newSalt();
    settings.setValue(SaltKey, QString::fromLatin1(salt));
    settings.setValue(HashKey, QString::fromLatin1(hashOf(password, salt)));
}
