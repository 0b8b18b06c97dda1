#include "common/Look.h"

#include "common/ClientSettings.h"
#include "common/ClientSkin.h"
#include "common/Languages.h"
#include "common/Words.h"

#include <CPaneDeck.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

QString qtTranslations()
{
#if QT_VERSION_MAJOR < 6
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#endif
}

/// Gives Qt's own dialogs their language; without Qt's translations they stay in English.
void loadQtWords(const QString& code)
{
    static QTranslator* s_translator = nullptr;
    delete s_translator;
    s_translator = new QTranslator(qApp);
    if (s_translator->load(QLocale(code), "qtbase", "_", qtTranslations()))
        QApplication::installTranslator(s_translator);
}

} // namespace

bool applyLook(const ClientSettings& settings)
{
    const bool isKnown = !languagePath(settings.language).isEmpty();
    const QString code = isKnown ? settings.language : "en";
    const QString path = languagePath(code);
    setStartLanguage(code);
    loadWords(path);
    loadQtWords(code);
    // Left to itself, the search for glyphs depends on the language of the machine.
    const QString family = QApplication::font().family();
    QFont::removeSubstitutions(family);
    if (code == "zh")
        QFont::insertSubstitution(family, "Noto Sans CJK SC");
    QApplication::setLayoutDirection(code == "ar" ? Qt::RightToLeft : Qt::LeftToRight);
    CPaneDeck::ChangeLook(settings.style, path);
    applyClientSkin(settings.style == 0 ? configuredStyle() : settings.style);
    return isKnown;
}
