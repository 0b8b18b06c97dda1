#pragma once

#include <QByteArray>

/// The largest split file that is read; what the library writes stays below two thirds of it.
constexpr int MaxXmlSize = 128 * 1024;

/// Whether a recursive parser gets through the text in short time and on little stack: it is no larger than
/// MaxXmlSize, valid UTF-8 without zeros, its elements nest no deeper than 16 and have no more than 16
/// attributes. Strict where a parser may see another structure than this one does: no angle bracket within a
/// tag or its quotes, and a declaration at the very start only.
bool IsHarmlessXml(const QByteArray& text);
