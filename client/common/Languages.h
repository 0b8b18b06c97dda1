#pragma once

#include <QString>
#include <QVector>

/// A language that the installation brings.
struct Language
{
    QString code; ///< such as "de"
    QString name; ///< in the language itself
    QString path; ///< its file
};

/// The languages whose files lie in the installation, English first.
QVector<Language> availableLanguages();

/// The code of the language chosen for the next start; English while none was chosen.
QString chosenLanguage();

/// Keeps a language for the next start.
void chooseLanguage(const QString& code);

/// The language of this start, which an option may have set apart from what was chosen; "en" until it is set.
QString startLanguage();
void setStartLanguage(const QString& code);

/// The file of a language; empty if the installation has none.
QString languagePath(const QString& code);
