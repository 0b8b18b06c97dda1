#pragma once

#include "SkinTokens.h"

#include <QImage>

/// Draws the pictures of one directory of a skin from their SVG sources. In a source "currentColor" stands
/// for the token "line", and "var(--name)" for the token "name", so that a source stays a picture of its own.
class PictureWriter
{
public:
    /// `colors` is the group of tokens that this directory prefers, such as "bar".
    PictureWriter(const QString& source, const QString& target, const SkinTokens& tokens,
                  const QString& colors);

    /// Writes a glyph as SVG for every state of a button: "name", "name_hover", "name_pressed",
    /// "name_disabled", and with `checkable` "name_checked" and "name_checked_disabled".
    void WriteGlyph(const QString& name, bool checkable) const;

    /// Writes a picture as PNG. `line` is a name, or a name with its source, or both with an angle in
    /// degrees. `doubled` writes "name@2x" too, for those who draw it by way of QIcon.
    void WritePicture(const QString& line, bool doubled) const;

    /// Writes a picture as PNG without alpha, and its double. Its shape is cut sharply out of a ground of the
    /// token "sharp-ground", so that a heuristic mask finds it.
    void WriteSharpPicture(const QString& name) const;

    /// Writes a button with a ground of its own as PNG for its eight states, "name_normal" and so on.
    void WriteButton(const QString& name) const;

private:
    QString Dressed(const QString& file, const QString& state) const;
    QString CheckedSource(const QString& folder, const QString& name) const;
    void Save(const QImage& image, const QString& name) const;

    QString m_strSource;
    QString m_strTarget;
    const SkinTokens& m_tokens;
    QString m_strColors;
};
