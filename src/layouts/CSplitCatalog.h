#pragma once

#include "layouts/SplitLayout.h"

#include <QSize>
#include <QString>

/// The one process-wide object that knows where the installation lies and which split layouts exist.
/// A layout is named by the pair (type, index): type 0 normal, any other custom, index 0 to 9.
class CSplitCatalog
{
public:
    static constexpr int LayoutCount = 10;

    static CSplitCatalog* Instance();

    /// Deletes the object, so that the next Instance() looks at the installation anew.
    static void Release();

    /// Fills all twenty layouts. Edits made in memory since the last call are lost.
    void LoadLayouts();

    /// The layout of a pair; index must be 0 to 9.
    const SplitLayout& Layout(int type, int index) const;

    QString resourceDir;      ///< pictures of the style; empty if the directory is missing
    int styleId = 0;          ///< 1 dark, 2 light, 0 if the configuration names neither
    QString qssDir;           ///< style sheets of the style; empty if the directory is missing
    QString organizationDir;  ///< configuration and split file; empty if the directory is missing
    SplitLayout normalLayouts[LayoutCount];
    SplitLayout customLayouts[LayoutCount];
    QSize thumbnailSize;      ///< invalid until the picker sets it
    QString splitFilePath;

private:
    CSplitCatalog();

    void LoadDefaults();
};
