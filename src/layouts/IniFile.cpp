#include "layouts/IniFile.h"

#include <QFile>
#include <QRegularExpression>

namespace {

/// Whether a value begins with an at sign, however it is escaped, and one of the words behind it that
/// QSettings decodes into more than a text or a few numbers.
bool HoldsObjects(const QString& path)
{
    static const QRegularExpression object(R"([=,](?:["\s]|\\(?:[^x0-7]|x(?![0-9a-fA-F])))*+)"
                                           R"((?:@|\\x[0-9a-fA-F]*40|\\[0-7]*100))"
                                           R"((?!@|(?:ByteArray|String|Rect|Size|Point|Invalid)\())");
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && object.match(QString::fromLatin1(file.readAll())).hasMatch();
}

} // namespace

IniFile::IniFile(const QString& path, const char* codec)
{
    if (HoldsObjects(path))
        return;
    m_settings.emplace(path, QSettings::IniFormat);
    if (codec)
        m_settings->setIniCodec(codec);
}

QVariant IniFile::Value(const QString& key) const
{
    return m_settings && !key.isEmpty() ? m_settings->value(key) : QVariant();
}
