#pragma once

#include "layouts/SplitLayout.h"
#include "layouts/SplitMatrix.h"

#include <QPixmap>
#include <QSize>
#include <QString>

/// The one process-wide object that knows the directories of the style and which split layouts exist.
/// A layout is named by the pair (type, index): type 0 normal, any other custom, index 0 to 9.
class CSplitCatalog
{
public:
    static constexpr int LayoutCount = 10;

    static CSplitCatalog* Instance();

    /// Deletes the object, so that the next Instance() looks at the installation anew.
    static void Release();

    /// True once Instance() has looked at the installation.
    static bool Exists();

    /// Takes style sheets and pictures of another style from now on, 1 or 2; any other number changes
    /// nothing.
    void ChooseStyle(int style);

    /// Fills all twenty layouts. Edits made in memory since the last call are lost.
    void LoadLayouts();

    /// The layout of a pair; index must be 0 to 9.
    const SplitLayout& Layout(int type, int index) const;

    /// Draws the layout's lines into `out`; only the used area of `out` is written.
    static void LayoutToMatrix(const SplitLayout& layout, SplitMatrix& out);

    /// Finds the cells of the matrix in scan order, by top line, then left line. `out.cells` must arrive
    /// empty.
    static void MatrixToLayout(const SplitMatrix& m, SplitLayout& out);

    /// Whether the straight stretch between two positions has no gap; true if it isn't straight.
    static bool IsLineSolid(const SplitMatrix& m, int r1, int c1, int r2, int c2);

    /// A picture of the layout's inner lines of the size thumbnailSize; null while that is invalid, and for
    /// an index that names no layout. Colours are names that QColor reads.
    QPixmap LayoutThumbnail(int type, int index, const QString& background, const QString& line) const;

    /// One of `count` pictures of equal width side by side in a file; null if there is no such picture.
    static QPixmap StripPixmap(const QString& path, int count, int index);

    /// A style sheet of the style, such as "/liveviewsheet.qss", with its pictures' paths filled in; empty if
    /// there is none.
    QString StyleSheet(const QString& fileName) const;

    QString resourceDir;     ///< pictures of the style; empty if the directory is missing
    int styleId = 0;         ///< 1 dark, 2 light, 0 if the configuration names neither
    QString qssDir;          ///< style sheets of the style; empty if the directory is missing
    QString organizationDir; ///< configuration and split file; empty if the directory is missing
    SplitLayout normalLayouts[LayoutCount];
    SplitLayout customLayouts[LayoutCount];
    QSize thumbnailSize;            ///< invalid until the picker sets it
    QString splitFilePath;          ///< where the layouts are written to, and read from if the file is there
    QString installedSplitFilePath; ///< where they are read from otherwise
    bool splitFileUnread = false;   ///< the split file has a content that the last reading refused

private:
    CSplitCatalog();

    void LoadDefaults();
    void TakeStyle(int style);
};
