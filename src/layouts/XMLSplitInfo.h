#pragma once

#include <QObject>

/// Reads and writes the split file, the only file that the library writes. Works on
/// CSplitCatalog::Instance().
class XMLSplitInfo : public QObject
{
    Q_OBJECT

public:
    /// Fills the catalog's layouts from the file. A layout that the file leaves out keeps its content, or
    /// gets the built-in one if it has none. With any result but 1 the catalog stays as it was. 1: all read.
    /// 0: no file, no XML, or no list of normal or custom layouts. -201: another root element. -401: an
    /// attribute is missing or outside its range, or cells don't tile their grid.
    int Read();

    /// Rewrites the file whole, in place. A failure goes unnoticed.
    void Write();
};
