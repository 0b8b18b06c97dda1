#include "common/Words.h"

#include <QFile>
#include <QHash>
#include <QTextStream>

namespace {

QHash<QString, QString> s_words;

} // namespace

QString word(const char* english)
{
    const QString key = QString::fromUtf8(english);
    return s_words.value(key, key);
}

void loadWords(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    bool ours = false;
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        const int equals = line.indexOf('=');
        if (line.startsWith('['))
            ours = line.trimmed() == "[Client]";
        else if (ours && equals > 0)
            s_words.insert(line.left(equals), line.mid(equals + 1));
    }
}
