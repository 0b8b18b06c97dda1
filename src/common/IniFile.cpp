#include "common/IniFile.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>

namespace {

bool IsIn(const char* set, char c)
{
    return c != '\0' && std::strchr(set, c);
}

/// Behind the blanks, empty lines and comments at `pos`.
int StartOfLine(const QByteArray& text, int pos)
{
    bool comment = false;
    for (; pos < text.size(); ++pos) {
        const char c = text.at(pos);
        if (c == '\n' || c == '\r')
            comment = false;
        else if (c == ';')
            comment = true;
        else if (!comment && c != ' ' && c != '\t')
            break;
    }
    return pos;
}

/// A line goes on behind a line end that is quoted or escaped, and ends before a semicolon that isn't.
int EndOfLine(const QByteArray& text, int pos)
{
    bool quoted = false;
    for (; pos < text.size(); ++pos) {
        const char c = text.at(pos);
        if (!quoted && IsIn("\n\r;", c))
            return pos;
        if (c == '"')
            quoted = !quoted;
        else if (c == '\\' && (text.mid(pos + 1, 2) == "\r\n" || text.mid(pos + 1, 2) == "\n\r"))
            pos += 2;
        else if (c == '\\')
            ++pos;
    }
    return text.size();
}

QString Unescaped(const QByteArray& name)
{
    QString result;
    for (int i = 0; i < name.size(); ++i) {
        const bool wide = name.mid(i, 2) == "%U";
        const int digits = wide ? 4 : 2;
        const QByteArray code = name.mid(i + digits / 2, digits);
        bool isNumber = false;
        const int number = code.toInt(&isNumber, 16);
        if (name.at(i) != '%' || code.size() < digits || !isNumber) {
            result += name.at(i) == '\\' ? QLatin1Char('/') : QLatin1Char(name.at(i));
        } else {
            result += QChar(number);
            i += digits / 2 + digits - 1;
        }
    }
    return result;
}

/// What the keys below a header start with.
QString SectionOf(const QByteArray& header)
{
    const int close = header.indexOf(']');
    const QByteArray name = header.mid(1, close < 0 ? -1 : close - 1).trimmed();
    if (name.compare("general", Qt::CaseInsensitive) == 0)
        return QString();
    if (name.compare("%general", Qt::CaseInsensitive) == 0)
        return "General/";
    return Unescaped(name) + '/';
}

/// Appends the character of the escape whose backslash lies before `pos`, if its number names one of ASCII.
/// The last position of the escape.
int AppendEscaped(const QByteArray& line, int pos, QByteArray& letters)
{
    const bool hexadecimal = line.mid(pos, 1) == "x";
    const int first = pos + (hexadecimal ? 1 : 0);
    int end = first;
    while (end < line.size() && IsIn(hexadecimal ? "0123456789abcdefABCDEF" : "01234567", line.at(end)))
        ++end;
    if (end == first)
        return pos;
    // QSettings lets a number overflow.
    const QByteArray digits = line.mid(first, end - first).right(hexadecimal ? 4 : 6);
    const uint code = digits.toUInt(nullptr, hexadecimal ? 16 : 8) & 0xffff;
    if (code < 0x80)
        letters += char(code);
    return end - 1;
}

/// Whether one of the line's values may be decoded into more than a text or a few numbers. QSettings leaves
/// out quotes, unknown escapes, some blanks and byte order marks, so all of their kind are left out here.
bool MayHoldObject(const QByteArray& line)
{
    QByteArray letters;
    for (int i = 0; i < line.size(); ++i) {
        const char c = line.at(i);
        if (c == '\\')
            i = AppendEscaped(line, i + 1, letters);
        else if (c > ' ' && c < 0x7f && c != '"')
            letters += c;
    }
    for (const char* start : {"=@Variant(", ",@Variant(", "=@DateTime(", ",@DateTime("}) {
        if (letters.contains(start))
            return true;
    }
    return false;
}

QStringList SectionsWithObjects(const QByteArray& text)
{
    QStringList sections;
    QString section;
    int end = text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    for (int start = StartOfLine(text, end); start < text.size(); start = StartOfLine(text, end)) {
        end = EndOfLine(text, start);
        const QByteArray line = text.mid(start, end - start);
        if (line.startsWith('['))
            section = SectionOf(line);
        else if (MayHoldObject(line))
            sections.append(section);
    }
    sections.removeDuplicates();
    return sections;
}

} // namespace

IniFile::IniFile(const QString& path, const char* codec)
{
    QFile file(path);
    // A pipe would block the open.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return;
    m_objectSections = SectionsWithObjects(file.readAll());
    m_settings.emplace(path, QSettings::IniFormat);
#if QT_VERSION_MAJOR < 6
    if (codec)
        m_settings->setIniCodec(codec);
#else
    Q_UNUSED(codec) // UTF-8 is all that there is
#endif
}

QVariant IniFile::Value(const QString& key) const
{
    const QString plain = key.split('/', Qt::SkipEmptyParts).join('/');
    const bool readable = m_settings && !plain.isEmpty() && !IsInObjectSection(plain);
    return readable ? m_settings->value(plain) : QVariant();
}

bool IniFile::IsInObjectSection(const QString& key) const
{
    for (const QString& section : m_objectSections) {
        // On some systems keys differ by their case and on others they don't.
        if (section.isEmpty() ? !key.contains('/') : key.startsWith(section, Qt::CaseInsensitive))
            return true;
    }
    return false;
}
