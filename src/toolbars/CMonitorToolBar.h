#pragma once

#include "deck/PaneDeckTypes.h"

#include <QFrame>

#include <memory>

class CSplitCustomDialog;
class QAbstractButton;
class QAction;
class QHBoxLayout;

/// The strip below the panes of a live or a tour deck. It turns clicks into signals and shows which pane
/// count is current when the deck tells it; it knows nothing of layouts.
class CMonitorToolBar : public QFrame
{
    Q_OBJECT

public:
    explicit CMonitorToolBar(QWidget* parent);
    ~CMonitorToolBar() override;

    /// Adds a widget right of the save button, before those added earlier.
    void addWidget(QWidget* w);

    /// Adds a widget at an index of the row; the save button has index 0. An index outside appends it.
    void insertWidget(int nIndex, QWidget* w);

    /// Lets the more button pop up a menu of 25, 36 and 64 panes instead of the picker.
    void UseFrameMenu();

    /// Marks the more button, behind which the custom layouts are, and no pane count.
    void MarkCustom();

    /// Leaves only the buttons for pane counts.
    void HideTourButtons();

Q_SIGNALS:
    void changePageNum(int nNum);
    void stopPlay();
    void capture();
    void record(bool bRecord);
    void wndBtnClicked(Btn_type_EX btnType);
    void wndfullScreen();
    void voiceChanged(int nVolume);

    /// The user picked a layout in the picker: type 0 normal or 1 custom, no 0 to 9.
    void sig_btnWndSwidch(int type, int no);

    /// A custom layout was edited from the picker, and written to the split file if that could be done.
    void sig_LayoutEdited(int nNo, bool bSaved);

public Q_SLOTS:
    /// Marks the button for a pane count; a number without a button marks none.
    void SetShowWndNo(int nNum);

    void onFrameButtonClick(QAction* action);
    void OnWndBtnClicked();

private:
    struct Ui;

    void BuildRow();
    void ShowPicker();

    std::unique_ptr<Ui> ui;
    CSplitCustomDialog* m_pSplitDialog;
    QHBoxLayout* m_pLayout;
    QAbstractButton* m_pCheckedBtn; ///< what SetShowWndNo last marked
};
