#pragma once

#include <QString>

/// A reason or error of the engine, such as "cannot open: no answer", in the words of this start's language.
/// What the engine passes on from elsewhere, such as the system's own texts, stays as it is.
QString engineText(const QString& english);
