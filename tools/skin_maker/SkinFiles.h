#pragma once

#include <QString>

/// Ends the program with a message: a skin that is made only in part is not made at all.
[[noreturn]] void GiveUp(const QString& message);

/// The text of a source file, in UTF-8.
QString ReadText(const QString& path);

/// Writes a file in UTF-8, making its directories.
void WriteText(const QString& path, const QString& text);
