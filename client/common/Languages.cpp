#include "common/Languages.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>

namespace {

struct Known
{
    const char* code;
    const char* name;
    const char* file;
};

constexpr Known KnownLanguages[] = {
    {"en", "English", "English"}, {"zh", "中文", "Chinese"},    {"es", "Español", "Spanish"},
    {"de", "Deutsch", "German"},  {"fr", "Français", "French"}, {"ar", "العربية", "Arabic"},
};

const char* const SettingsKey = "language";

QString s_strStart = "en";

QString PathOf(const Known& known)
{
    return QCoreApplication::applicationDirPath() + "/../languages/" + known.file + ".ini";
}

} // namespace

QVector<Language> AvailableLanguages()
{
    QVector<Language> languages;
    for (const Known& known : KnownLanguages) {
        if (QFileInfo::exists(PathOf(known)))
            languages.append({known.code, QString::fromUtf8(known.name), PathOf(known)});
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

QString StartLanguage()
{
    return s_strStart;
}

void SetStartLanguage(const QString& code)
{
    s_strStart = code;
}

QString LanguagePath(const QString& code)
{
    for (const Language& language : AvailableLanguages()) {
        if (language.code == code)
            return language.path;
    }
    return QString();
}
