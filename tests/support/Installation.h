#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>

/// The installation tree that the library finds beside a test program. It starts empty and goes with the
/// object; the catalog and the skin are released at both ends, so that they look at the tree anew.
class Installation
{
public:
    /// Lays out the directories of a style, 1 dark or 2 light; 0 lays out nothing at all.
    explicit Installation(int style = 1);
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    /// The root, below which "Organization" and the others lie.
    QString Root() const;

    /// The style's resource directory, "ResourcesBlank" or "ResourcesWhite" below the root.
    QString Resources() const;

    /// Writes a file below the root, making its directories.
    void Write(const QString& path, const QByteArray& content) const;

    /// Writes a picture of one colour below the root.
    void WritePicture(const QString& path, int width, int height, const QColor& color) const;

private:
    QString m_strStyleName;
};
