#include "layouts/XmlGuard.h"

bool IsHarmlessXml(const QByteArray& text)
{
    return text.size() <= MaxXmlSize && text.count('<') <= MaxXmlTags && text.count('=') <= MaxXmlAttributes;
}
