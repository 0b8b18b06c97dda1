#pragma once

#include "deck/PaneDeckTypes.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class QPushButton;

/// The strip that floats over the top edge of the pane under the mouse: the pane's title and its buttons.
/// A deck has one for all its panes.
class CVideoTitleWidget : public QWidget
{
    Q_OBJECT

public:
    /// The parent must be the deck.
    explicit CVideoTitleWidget(QWidget* parent);

    void SetText(QString strText);

    /// Only the buttons for record, audio, instant playback and zoom can be checked.
    void SetBtnChecked(Btn_type_EX btnType, bool bCheck);

    /// Shows or hides the button that ends mouse message mode.
    void ShowRemoteControl(bool bShow);

    /// For an alarm deck: only the close button stays, and its click reports BTN_TITLE_STOP too.
    void SetStopOnly();

    /// For a playback deck: no record, audio and instant playback.
    void HideLiveButtons();

public Q_SLOTS:
    void slot_wndBtnClick();
    void slot_onStopClick();

protected:
    void leaveEvent(QEvent* event) override;

private:
    struct TitleButton
    {
        QPushButton* CVideoTitleWidget::*field;
        const char* objectName;
        const char* toolTipKey;
        bool checkable;
        Btn_type_EX type;
    };
    static const TitleButton Buttons[7];

    QHBoxLayout* m_pLayout = nullptr;
    QLabel* m_pTitleLabel = nullptr;
    QPushButton* m_pBtnRemoteControl = nullptr;
    QPushButton* m_pBtnLocalRecord = nullptr;
    QPushButton* m_pBtnSnapshot = nullptr;
    QPushButton* m_pBtnAudio = nullptr;
    QPushButton* m_pBtnInstant = nullptr;
    QPushButton* m_pBtnZoomIn = nullptr;
    QPushButton* m_pBtnClose = nullptr;
};
