#pragma once

#include <QColor>
#include <QStringList>

/// The installation tree that the build has made, as the tests read it.
namespace SkinTree {

/// "ResourcesBlank" and "ResourcesWhite".
QStringList Styles();

QString Path(const QString& relative);

QByteArray Content(const QString& relative);

/// The pictures that a sheet of a style names, relative to the style's directory.
QStringList PicturesOf(const QString& style, const QString& sheet);

/// The colour of a token in the skin of a style.
QColor Token(const QString& style, const QString& name);

/// How much lighter one colour is than the other, from 1 to 21, after the rule of the Web Content
/// Accessibility Guidelines.
double Contrast(const QColor& first, const QColor& second);

/// A translucent colour over an opaque one.
QColor Over(const QColor& top, const QColor& ground);

} // namespace SkinTree
