#pragma once

#include <PaneDeckTypes.h>

#include <QWidget>

class CameraHub;
class CameraList;
class CPaneDeck;
class DeckStreams;
class EventLog;
class PaneKeys;
class PaneOverlay;
class PaneRecorders;
class PaneSnapshots;
class PaneSound;
class PaneSteering;
class PaneZoom;
class SavedBar;
struct CameraRecord;
class QMenu;
class QTreeWidgetItem;

/// What the tabs have in common: a deck of one kind, the cameras in its panes, and the buttons of its title
/// bar.
class DeckTab : public QWidget
{
    Q_OBJECT

public:
    /// `origin` stands in the log before each line of this tab.
    DeckTab(const QString& origin, _WND_TYPE type, int paneCount, CameraHub* hub, EventLog* log);
    ~DeckTab() override;

    CPaneDeck* deck() const { return m_deck; }
    DeckStreams* streams() const { return m_streams; }
    PaneSound* sound() const { return m_sound; }
    PaneOverlay* overlay() const { return m_overlay; }
    PaneZoom* zoom() const { return m_zoom; }

    /// Shows a camera in a pane in the way of this tab; a pane below 0 means none in particular.
    virtual void showCamera(const CameraRecord& camera, int pane);

    /// What the mouse does on all panes: 0 nothing, 1 PTZ, 2 rectangle.
    void setMouseFunction(int function);
    int mouseFunction() const { return m_mouseFunction; }

    void setScale(WndScase scale);

    /// All that can be done with a pane, each beside its key.
    virtual void fillPaneMenu(QMenu* menu, int pane);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    /// The tab is on screen for the first time, and its deck has a size: time for the first layout.
    virtual void firstShown() = 0;

    void showEvent(QShowEvent* event) override;

    /// The panes that a camera is in.
    QVector<int> panesOf(const CameraRecord* camera) const;

    /// A button of the title bar or the toolbar. The base knows snapshot, record, audio and close.
    virtual void buttonClicked(int pane, Btn_type_EX button);

    /// Takes a pane's camera out, and keeps the mouse function that the reset of the pane ends.
    virtual void closePane(int pane);

protected Q_SLOTS:
    /// The list has other things to say of a camera, or it goes: its panes follow.
    virtual void cameraChanged(const CameraRecord* camera, const CameraRecord& before);
    virtual void cameraGoes(const CameraRecord* camera);

    void tell(const QString& text) const;
    /// Lets the operator open the folder of a file that was saved.
    void showSaved(const QString& path);

private Q_SLOTS:
    void dropCamera(QTreeWidgetItem* item, int pane);
    void showPaneMenu(int pane);
    void popUpPaneMenu(int pane, QPoint place);
    void paneStateChanged(int pane, const QString& text);
    /// A custom layout that is shown follows what is made of it.
    void showEdited(int layout, bool isSaved);

private:
    void addKeys(_WND_TYPE type, int paneCount);
    void tellZoom(int pane);

    QString m_origin;
    EventLog* m_log;
    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    PaneRecorders* m_recorders;
    PaneSound* m_sound;
    PaneSteering* m_steering;
    PaneOverlay* m_overlay;
    PaneKeys* m_keys = nullptr;
    PaneZoom* m_zoom;
    PaneSnapshots* m_snapshots;
    SavedBar* m_saved = nullptr;
    int m_mouseFunction = 0;
    bool m_wasShown = false;
};
