#pragma once

#include <QString>

/// The text of a language key such as "PaneDeck.Ok", looked up in section "String" of the language file;
/// the key itself if there is no file, no such key, or no text behind it.
QString LangText(QString key);

/// Sets the language file of the process. Only the first path that is not empty counts, even if there is no
/// such file; widgets that exist already keep their texts.
void SetLanguageFile(const QString& path);

/// The same whatever was set before; an empty path changes nothing.
void ReplaceLanguageFile(const QString& path);
