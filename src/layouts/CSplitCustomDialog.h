#pragma once

#include "layouts/Ui_CSplitCustomDialog.h"

#include <QWidget>

/// The pop-up from which the user picks a layout. It hides when a layout has been picked and when it loses
/// the focus. The catalog must be loaded when it is built: the normal layouts are drawn only then.
class CSplitCustomDialog : public QWidget
{
    Q_OBJECT

public:
    explicit CSplitCustomDialog(QWidget* parent);

Q_SIGNALS:
    /// The user picked a layout: type 0 normal or 1 custom, no 0 to 9. Emitted while the picker still shows.
    void sig_btnWndSwidch(int type, int no);

public Q_SLOTS:
    void btnEditclicked();
    void slot_btnWndSwidch();

    /// Draws the custom layouts as they are now.
    void slot_setbtnCIcon();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void SetIcons(int type);

    Ui_CSplitCustomDialog ui;
};
