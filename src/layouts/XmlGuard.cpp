#include "layouts/XmlGuard.h"

#include <QTextCodec>

namespace {

constexpr int MaxDepth = 16;
constexpr int MaxAttributes = 16;

bool IsUtf8(const QByteArray& text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool StartsWith(const QByteArray& text, int pos, const char* start)
{
    return qstrncmp(text.constData() + pos, start, uint(qstrlen(start))) == 0;
}

/// The end of what may hold anything, a comment or a character data section: the position behind it, the end
/// of the text if it is never closed, and `pos` if there is no such section there.
int EndOfSection(const QByteArray& text, int pos)
{
    constexpr struct
    {
        const char* open;
        const char* close;
    } Sections[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}};
    for (const auto& section : Sections) {
        if (!StartsWith(text, pos, section.open))
            continue;
        const int close = text.indexOf(section.close, pos + int(qstrlen(section.open)));
        return close < 0 ? text.size() : close + int(qstrlen(section.close));
    }
    return pos;
}

/// The position behind the tag that starts at `pos`, the end of the text if it is never closed; -1 if it has
/// an angle bracket inside or too many attributes.
int EndOfTag(const QByteArray& text, int pos)
{
    char quote = 0;
    int attributes = 0;
    for (++pos; pos < text.size(); ++pos) {
        const char c = text.at(pos);
        if (c == '>' && !quote)
            return pos + 1;
        if (c == '<' || c == '>')
            return -1;
        if (c == '=' && !quote && ++attributes > MaxAttributes)
            return -1;
        if (c == quote)
            quote = 0;
        else if (!quote && (c == '"' || c == '\''))
            quote = c;
    }
    return pos;
}

int DepthStep(const QByteArray& text, int start, int end)
{
    const char kind = text.constData()[start + 1];
    if (kind == '!' || kind == '?' || text.at(qMax(start, end - 2)) == '/')
        return 0;
    return kind == '/' ? -1 : 1;
}

bool IsShallow(const QByteArray& text)
{
    int depth = 0;
    const int first = text.indexOf('<');
    for (int pos = first; pos >= 0; pos = text.indexOf('<', pos)) {
        const int start = pos;
        pos = EndOfSection(text, start);
        if (pos > start)
            continue;
        if (start > first && StartsWith(text, start, "<?"))
            return false;
        pos = EndOfTag(text, start);
        if (pos < 0)
            return false;
        depth = qMax(0, depth + DepthStep(text, start, pos));
        if (depth > MaxDepth)
            return false;
    }
    return true;
}

} // namespace

bool IsHarmlessXml(const QByteArray& text)
{
    return text.size() <= MaxXmlSize && !text.contains('\0') && IsUtf8(text) && IsShallow(text);
}
