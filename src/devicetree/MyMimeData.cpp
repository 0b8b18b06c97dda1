#include "devicetree/MyMimeData.h"

MyMimeData::MyMimeData() : m_lstFormats(QStringLiteral("mydata")) {}

bool MyMimeData::hasFormat(const QString& strFormat) const
{
    return m_lstFormats.contains(strFormat) || QMimeData::hasFormat(strFormat);
}
