#pragma once

#include "layouts/Ui_CSplitCustomDialog.h"

#include <QList>
#include <QWidget>

class QRubberBand;

/// The pop-up from which the user picks a layout. It hides when a layout has been picked and when it loses
/// the focus. The catalog must be loaded when it is built: the normal layouts are drawn only then.
///
/// The focus stays with the picker: arrows go from button to button, which is framed then, and Return or
/// Space clicks it. Tab gives the focus away, which hides the picker.
class CSplitCustomDialog : public QWidget
{
    Q_OBJECT

public:
    explicit CSplitCustomDialog(QWidget* parent);

Q_SIGNALS:
    /// The user picked a layout: type 0 normal or 1 custom, no 0 to 9. Emitted while the picker still shows.
    void sig_btnWndSwidch(int type, int no);

    /// What the custom layout dialog told while the picker's button had it open.
    void sig_LayoutEdited(int nNo, bool bSaved);

public Q_SLOTS:
    void btnEditclicked();
    void slot_btnWndSwidch();

    /// Draws the custom layouts as they are now.
    void slot_setbtnCIcon();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void SetIcons(int type);
    void GoBy(int step);

    Ui_CSplitCustomDialog ui;
    QList<QToolButton*> m_buttons;   ///< all that keys reach, row by row
    int m_current = -1;              ///< the one of them that the keys are on, -1 for none
    QRubberBand* m_pFrame = nullptr; ///< around that one
};
