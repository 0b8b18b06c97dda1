#include "SkinTokens.h"

#include "SkinFiles.h"

#include <QSettings>

SkinTokens::SkinTokens(const QStringList& files)
{
    for (const QString& file : files) {
        const QSettings settings(file, QSettings::IniFormat);
        if (settings.status() != QSettings::NoError || settings.allKeys().isEmpty())
            GiveUp("no tokens in " + file);
        for (const QString& key : settings.allKeys())
            m_mapValues.insert(key, settings.value(key).toString());
    }
}

QString SkinTokens::Value(const QString& name) const
{
    if (!Has(name))
        GiveUp("no token " + name);
    return m_mapValues.value(name);
}

QString SkinTokens::Value(const QString& colors, const QString& name, const QString& state) const
{
    const QStringList candidates = {colors + "-" + name + "-" + state, colors + "-" + name,
                                    name + "-" + state};
    for (const QString& candidate : candidates) {
        if (Has(candidate))
            return Value(candidate);
    }
    return Value(name);
}
