#pragma once

#include <QSettings>
#include <QStringList>
#include <QVariant>

#include <optional>

/// An INI file, open for reading. A missing file has no keys.
///
/// When QSettings is asked for a key it decodes all values of the key's section, and one that is a serialised
/// object may then take any amount of memory. So a section that holds such a value has no keys here; the
/// other sections of the file are not touched by it.
class IniFile
{
public:
    /// Without a codec, bytes are Latin-1 characters.
    explicit IniFile(const QString& path, const char* codec = nullptr);

    /// The value of a key, written as the group, "/" and the name; invalid if there is none.
    QVariant Value(const QString& key) const;

private:
    bool IsInObjectSection(const QString& key) const;

    std::optional<QSettings> m_settings;
    QStringList m_objectSections; ///< as they start their keys, with the slash; the general one is empty
};
