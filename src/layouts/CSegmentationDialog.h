#pragma once

#include "layouts/CTitleDialog.h"
#include "layouts/Ui_CSegmentationDialog.h"

#include <QList>

/// The dialog in which the user shapes the custom layouts. Each edit goes into the catalog and into the split
/// file the moment it is made. It tells nobody: a deck shows an edited layout when it is picked again.
class CSegmentationDialog : public CTitleDialog
{
    Q_OBJECT

public:
    explicit CSegmentationDialog(QWidget* parent);

    /// Draws all tabs and loads the current layout into the editor.
    void RefreshTabs();

public Q_SLOTS:
    void slot_tabclick();

    /// Stores the editor's layout.
    void slot_update();

    void slot_ColChange(int value);
    void slot_RowChange(int value);

private:
    void ShowTab(int index);
    void LoadEditor();

    Ui_CSegmentationDialog ui;
    int m_currentTab;            ///< index of the layout being edited
    QList<CSplitButton*> m_tabs; ///< in the order of the layouts
};
