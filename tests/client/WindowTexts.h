#pragma once

#include <QStringList>

class QWidget;

/// The texts of a window, and where they are, that lack the mark which every word of a language has; names
/// and numbers, which are the same in all of them, are left out.
QStringList untranslated(const QWidget& top, const QString& mark);
