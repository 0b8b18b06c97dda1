#include "Languages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>

namespace {

struct Known
{
    const char* code;
    const char* name;
};

constexpr Known KnownLanguages[] = {
    {"en", "English"}, {"zh", "中文"},     {"es", "Español"},
    {"de", "Deutsch"}, {"fr", "Français"}, {"ar", "العربية"},
};

const char* const SettingsKey = "language";

QString PathOf(const char* code)
{
    return QCoreApplication::applicationDirPath() + "/../languages/" + code + ".ini";
}

} // namespace

QVector<Language> AvailableLanguages()
{
    QVector<Language> languages;
    for (const Known& known : KnownLanguages) {
        if (QFileInfo::exists(PathOf(known.code)))
            languages.append({known.code, QString::fromUtf8(known.name), PathOf(known.code)});
    }
    return languages;
}

QString ChosenLanguage()
{
    return QSettings().value(SettingsKey, "en").toString();
}

void ChooseLanguage(const QString& code)
{
    QSettings().setValue(SettingsKey, code);
}

QString LanguagePath(const QString& code)
{
    for (const Language& language : AvailableLanguages()) {
        if (language.code == code)
            return language.path;
    }
    return QString();
}
