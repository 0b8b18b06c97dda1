#pragma once

#include <PaneDeckTypes.h>

#include <QWidget>

class CameraHub;
class CameraList;
class CPaneDeck;
class DeckStreams;
class EventLog;
class PaneRecorders;
class PaneSound;
struct CameraRecord;
class QMenu;
class QTreeWidgetItem;

/// What the tabs have in common: a deck of one kind, the cameras in its panes, and the buttons of its title
/// bar.
class DeckTab : public QWidget
{
    Q_OBJECT

public:
    /// `name` stands in the log before each line of this tab.
    DeckTab(const QString& name, _WND_TYPE type, int paneCount, CameraHub* hub, EventLog* log);
    ~DeckTab() override;

    CPaneDeck* Deck() const { return m_pDeck; }
    DeckStreams* Streams() const { return m_pStreams; }
    PaneSound* Sound() const { return m_pSound; }
    const QString& Name() const { return m_strName; }

    /// Shows a camera in a pane in the way of this tab; a pane below 0 means none in particular.
    virtual void ShowCamera(const CameraRecord& camera, int pane);

    /// What the mouse does on all panes: 0 nothing, 1 PTZ, 2 rectangle.
    void SetMouseFunction(int function);

    void SetScale(WndScase scale);

protected:
    /// The tab is on screen for the first time, and its deck has a size: time for the first layout.
    virtual void FirstShown() = 0;

    void showEvent(QShowEvent* event) override;

    /// A button of the title bar or the toolbar. The base knows snapshot, record, audio and close.
    virtual void ButtonClicked(int pane, Btn_type_EX button);

    /// Adds to the menu of a right click on a pane.
    virtual void FillPaneMenu(QMenu* menu, int pane);

    /// The check state of a button that only shows it has changed.
    void TellState(int pane, const QString& name, Btn_type_EX button) const;

    /// Takes a pane's camera out, and keeps the mouse function that the reset of the pane ends.
    virtual void ClosePane(int pane);

protected Q_SLOTS:
    void Log(const QString& text) const;

private Q_SLOTS:
    void slot_dragEvent(QTreeWidgetItem* item, int pane);
    void slot_button(int pane, Btn_type_EX button);
    void slot_rightClick(int pane);
    void slot_ptz(int pane, int command, int type);
    void slot_paneState(int pane, const QString& text);

private:
    void SaveSnapshot(int pane);

    QString m_strName;
    EventLog* m_pLog;
    CPaneDeck* m_pDeck;
    DeckStreams* m_pStreams;
    PaneRecorders* m_pRecorders;
    PaneSound* m_pSound;
    int m_nFunction = 0;
    bool m_bShown = false;
};
