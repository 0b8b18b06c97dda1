#include "archive/FileNames.h"

#include <QCryptographicHash>
#include <QVector>

namespace {

constexpr int SumLength = 8;
constexpr int SumBytes = SumLength + 1;

bool isPlain(uint sign)
{
    if (sign < 0x80 && QByteArray("/\\:*?\"<>|%").contains(char(sign)))
        return false;
    switch (QChar::category(sign)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_NotAssigned:
    case QChar::Other_PrivateUse:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

/// Its beginning, as many whole signs as fit.
QString readable(const QString& name, int mostBytes)
{
    QString text;
    int bytes = 0;
    const QVector<uint> signs = name.toUcs4();
    for (const uint sign : signs) {
        const uint shown = isPlain(sign) && !(text.isEmpty() && (sign == '.' || sign == ' ')) ? sign : '-';
        const QString next = QString::fromUcs4(reinterpret_cast<const char32_t*>(&shown), 1);
        bytes += next.toUtf8().size();
        if (bytes > mostBytes)
            break;
        text += next;
    }
    return text;
}

QString sumOf(const QString& name)
{
    const QByteArray units(reinterpret_cast<const char*>(name.utf16()), name.size() * int(sizeof(ushort)));
    const QByteArray sum = QCryptographicHash::hash(units, QCryptographicHash::Sha1).toHex();
    return QString::fromLatin1(sum.left(SumLength));
}

} // namespace

QString fileNameOf(const QString& name, int mostBytes)
{
    const QString text = readable(name, mostBytes);
    if (!name.isEmpty() && text == name && !name.endsWith(' '))
        return name;
    return readable(name, mostBytes - SumBytes).trimmed() + "-" + sumOf(name);
}
