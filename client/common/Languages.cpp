#include "common/Languages.h"

#include "common/ClientInstallation.h"

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

constexpr char SettingsKey[] = "language";

QString s_startLanguage = "en";

QString pathOf(const Known& known)
{
    return ClientInstallation::path(QString("languages/%1.ini").arg(known.file));
}

} // namespace

QVector<Language> availableLanguages()
{
    QVector<Language> languages;
    for (const Known& known : KnownLanguages) {
        if (QFileInfo::exists(pathOf(known)))
            languages.append({known.code, QString::fromUtf8(known.name), pathOf(known)});
    }
    return languages;
}

QString chosenLanguage()
{
    return QSettings().value(SettingsKey, "en").toString();
}

void chooseLanguage(const QString& code)
{
    QSettings().setValue(SettingsKey, code);
}

QString startLanguage()
{
    return s_startLanguage;
}

void setStartLanguage(const QString& code)
{
    s_startLanguage = code;
}

QString languagePath(const QString& code)
{
    for (const Language& language : availableLanguages()) {
        if (language.code == code)
            return language.path;
    }
    return QString();
}
