#include "text/CLanguageFile.h"

#include <QFile>
#include <QTextStream>

namespace {

bool IsSection(const QString& line)
{
    return line.contains('[') && line.contains(']');
}

QString SectionName(QString line)
{
    return line.remove('[').remove(']');
}

} // namespace

CLanguageFile::CLanguageFile(const QString& path) : m_strPath(path)
{
    if (!m_strPath.isEmpty())
        Load();
}

void CLanguageFile::SetValue(const QString& key, const QString& value)
{
    m_mapText.insert(key, value);
}

QString CLanguageFile::GetValue(const QString& key) const
{
    return m_mapText.value(key);
}

void CLanguageFile::Load()
{
    QFile file(m_strPath);
    if (!file.open(QIODevice::ReadOnly))
        return;
    QTextStream stream(&file);
    QString section;
    QString line;
    while (stream.readLineInto(&line)) {
        if (IsSection(line)) {
            section = SectionName(line);
            continue;
        }
        const int equals = line.indexOf('=');
        if (equals >= 0)
            SetValue(section + "/" + line.left(equals), line.mid(equals + 1).section('=', 0, 0));
    }
}
