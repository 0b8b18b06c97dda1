#pragma once

#include <QObject>

/// Reads and writes the split file, the only file that the library writes. Works on
/// CSplitCatalog::Instance().
class XMLSplitInfo : public QObject
{
    Q_OBJECT

public:
    /// Fills the catalog's layouts from the file. A layout that the file leaves out keeps its content, or
    /// gets the built-in one if it has none. Cells may leave gaps and lie on each other. With any result but
    /// 1 the catalog's layouts stay as they were. 1: all read. 0: no file, no XML or more of it than
    /// XmlGuard.h allows, or no list of normal or custom layouts. -201: no root element "SplitInfo". -401: an
    /// attribute is missing; a number is outside of its range, which is 1 to 10 for the layout, 1 to 8 for
    /// rows and columns and 0 to 64 for the count; a count isn't that of the cells; or a cell has no area in
    /// the grid.
    int Read();

    /// Rewrites the file whole, in place; false if that fails, and nobody else is told. A file that the last
    /// Read() couldn't read is copied first, once, to its own name with ".unread" and a number behind it, and
    /// stays as it is if it can't be.
    bool Write();
};
