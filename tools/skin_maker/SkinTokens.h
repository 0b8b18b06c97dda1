#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// The named values of a skin, such as "bar-line-hover": mostly colours. A later file overrides an earlier
/// one.
class SkinTokens
{
public:
    explicit SkinTokens(const QStringList& files);

    bool Has(const QString& name) const { return m_mapValues.contains(name); }

    /// The value of a name that must exist; ends the program with a message if it doesn't.
    QString Value(const QString& name) const;

    /// The value for a name in a picture: of the first that exists of colors-name-state, colors-name,
    /// name-state and name. A name that stands nowhere ends the program with a message.
    QString Value(const QString& colors, const QString& name, const QString& state) const;

private:
    QHash<QString, QString> m_mapValues;
};
