#pragma once

#include "layouts/CTitleDialog.h"
#include "layouts/Ui_CSegmentationDialog.h"

#include <QList>

/// The dialog in which the user shapes the custom layouts. Each edit goes into the catalog and into the split
/// file the moment it is made. A deck shows an edited layout when it is picked again.
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

Q_SIGNALS:
    /// A custom layout was stored, 0 to 9, and written to the split file if that could be done. It may be the
    /// same as before.
    void sig_LayoutEdited(int nNo, bool bSaved);

private:
    void ShowTab(int index);
    void LoadEditor();

    Ui_CSegmentationDialog ui;
    int m_currentTab;            ///< index of the layout being edited
    QList<CSplitButton*> m_tabs; ///< in the order of the layouts
};
