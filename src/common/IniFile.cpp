#include "common/IniFile.h"

#include <QFile>
#include <QRegularExpression>

namespace {

/// A pattern of a word that QSettings may read, given that it leaves out quotes with the blanks behind them.
/// An escape or a byte order mark may hide the rest of the word.
QString Disguised(const QString& word)
{
    QString pattern;
    for (int i = word.size() - 1; i >= 0; --i) {
        pattern = QStringLiteral(R"(["\s]*(?:[\\\x80-\xff]|%1%2))")
                      .arg(QRegularExpression::escape(word.mid(i, 1)), pattern);
    }
    return pattern;
}

/// Whether a value begins with an at sign, however it is escaped, and one of the words behind it that
/// QSettings decodes into more than a text or a few numbers.
bool HoldsObjects(const QString& path)
{
    static const QRegularExpression object(
        QStringLiteral(R"([=,](?:["\s\x80-\xff]|\\(?:[^x0-7]|x(?![0-9a-fA-F])))*+)"
                       R"((?:@|\\x[0-9a-fA-F]*40|\\[0-7]*100)(?:%1|%2))")
            .arg(Disguised("Variant("), Disguised("DateTime(")));
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
