#pragma once

#include <QByteArray>

/// The largest split file that is read; what the library writes stays below two thirds of it.
constexpr int MaxXmlSize = 128 * 1024;

/// The most tags that a split file may have, each comment and each closing tag being one, and so the most
/// levels that the parser goes down, at some 200 bytes of stack each. What the library writes has at most
/// 1350.
constexpr int MaxXmlTags = 3072;

/// The most attributes that a split file may have. The parser compares the names of those of one element,
/// each with each. What the library writes has at most 6482.
constexpr int MaxXmlAttributes = 8192;

/// Whether a recursive parser gets through the text in short time and on little stack, by the three limits
/// above. Whatever may start a tag or an attribute counts, also in a comment or in quotes: the parser
/// may see another structure than this function would, but never more of either.
bool IsHarmlessXml(const QByteArray& text);
