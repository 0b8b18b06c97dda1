#include "common/OneLine.h"

QString oneLine(const QString& text)
{
    QString line = text;
    for (QChar& sign : line) {
        const QChar::Category category = sign.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            sign = ' ';
    }
    return line;
}
