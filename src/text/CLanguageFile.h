#pragma once

#include <QMap>
#include <QString>

/// The texts of one language file, by full key: section name, "/" and key as they stand in the file.
///
/// A line with both brackets names a section; any other line with a "=" is an entry, whose text ends at the
/// second "="; all else is skipped. Nothing is trimmed, and of equal keys the last one counts.
class CLanguageFile
{
public:
    /// Reads the file in the encoding of the system's locale. A path that is empty or can't be read gives an
    /// empty table.
    explicit CLanguageFile(const QString& path);

    void SetValue(const QString& key, const QString& value);

    /// Empty if there is no such key.
    QString GetValue(const QString& key) const;

private:
    void Load();

    QString m_strPath;
    QMap<QString, QString> m_mapText;
};
