#include "layouts/XmlGuard.h"

namespace {

int ElementStarts(const QByteArray& text)
{
    int count = 0;
    for (int pos = text.indexOf('<'); pos >= 0; pos = text.indexOf('<', pos + 1)) {
        const char next = text.constData()[pos + 1];
        if (next != '/' && next != '!' && next != '?')
            ++count;
    }
    return count;
}

} // namespace

bool IsHarmlessXml(const QByteArray& text)
{
    return text.size() <= MaxXmlSize && ElementStarts(text) <= MaxXmlElements &&
           text.count('=') <= MaxXmlAttributes;
}
