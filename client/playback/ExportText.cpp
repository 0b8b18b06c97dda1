#include "playback/ExportText.h"

#include "common/Languages.h"
#include "common/Words.h"

#include <QLocale>
#include <QStringList>

QString ExportText::size(qint64 bytes)
{
    return QLocale(startLanguage()).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString ExportText::format(int format)
{
    if (format == OnePicture)
        return word("Encoded anew, without sound; gaps are closed.");
    return format == Mp4 ? word("Without encoding; gaps are closed.")
                         : word("Without encoding, from the key frame before; gaps are closed.");
}

QString ExportText::remarks(const ExportRemarks& remarks)
{
    QStringList lines;
    if (remarks.gaps > 0)
        lines.append(
            word("Gaps left out: %1, %2 seconds in all").arg(remarks.gaps).arg(remarks.gapMs / 1000));
    if (remarks.lostSound)
        lines.append(word("Such a file can't hold this sound, which was left out."));
    if (!remarks.unread.isEmpty())
        lines.append(word("Recordings that could not be read: %1").arg(remarks.unread.size()));
    return lines.join('\n');
}
