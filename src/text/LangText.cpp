#include "text/LangText.h"

#include "text/CLanguageFile.h"

#include <QObject>

namespace {

QString s_strLanguagePath;
CLanguageFile* s_pLanguage = nullptr;

} // namespace

QString LangText(QString key)
{
    if (!s_pLanguage)
        return key;
    const QString text = s_pLanguage->GetValue(QObject::tr("String/%1").arg(key));
    return text.isEmpty() ? key : text;
}

void SetLanguageFile(const QString& path)
{
    if (!s_strLanguagePath.isEmpty())
        return;
    s_strLanguagePath = path;
    // An empty path has left an empty table behind, which is filled in place.
    if (s_pLanguage)
        *s_pLanguage = CLanguageFile(path);
    else
        s_pLanguage = new CLanguageFile(path);
}

void ReplaceLanguageFile(const QString& path)
{
    if (path.isEmpty())
        return;
    s_strLanguagePath.clear();
    SetLanguageFile(path);
}
