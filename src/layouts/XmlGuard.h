#pragma once

#include <QByteArray>

/// The largest split file that is read; what the library writes stays below two thirds of it.
constexpr int MaxXmlSize = 128 * 1024;

/// The most elements that a split file may have, and so the most levels, each of which takes some 200 bytes
/// of the parser's stack. What the library writes has at most 1303.
constexpr int MaxXmlElements = 2048;

/// The most attributes that a split file may have. The parser compares the names of those of one element,
/// each with each. What the library writes has at most 6482.
constexpr int MaxXmlAttributes = 8192;

/// Whether a recursive parser gets through the text in short time and on little stack, by the three limits
/// above. Whatever may start an element or an attribute counts, also in a comment or in quotes: the parser
/// may see another structure than this function would, but never more of either.
bool IsHarmlessXml(const QByteArray& text);
