#pragma once

#include <QSettings>
#include <QVariant>

#include <optional>

/// An INI file of the installation, open for reading. A missing file has no keys, and neither has one with a
/// value that is a serialised object: such a value may ask for any amount of memory, which QSettings then
/// takes.
class IniFile
{
public:
    /// Without a codec, bytes are Latin-1 characters.
    explicit IniFile(const QString& path, const char* codec = nullptr);

    /// The value of a key, written as the group, "/" and the name; invalid if there is none.
    QVariant Value(const QString& key) const;

private:
    std::optional<QSettings> m_settings;
};
