#include "common/Words.h"

#include <QFile>
#include <QHash>

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
    s_words.clear();
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    bool ours = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).remove('\n');
        const int equals = line.indexOf('=');
        if (line.startsWith('['))
            ours = line.trimmed() == "[Client]";
        else if (ours && equals > 0)
            s_words.insert(line.left(equals), line.mid(equals + 1));
    }
}
