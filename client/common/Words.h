#pragma once

#include <QString>

/// The client's own words in the language of this start: the text that the language file's section "Client"
/// gives for an English one, or the English one itself.
QString word(const char* english);

/// Reads the words of a language file in place of those before; an empty path leaves everything in English.
void loadWords(const QString& path);
