#pragma once

#include "cameras/CameraList.h"

#include <QMainWindow>

class CameraHub;
class CameraTree;
class ClientArchive;
class EventLog;
class DeckTab;
class LiveTab;
class QAction;
class QTabWidget;
struct ClientOptions;

/// The client's window: cameras on the left, the deck, and the log of events below, which folds away.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(const ClientOptions& options);
    ~MainWindow() override;

    LiveTab* Live() const { return m_pLive; }

    /// The tab that is in front.
    DeckTab* Current() const;
    EventLog* Log() const { return m_pLog; }

private Q_SLOTS:
    void slot_layoutChosen(QAction* action);
    void slot_scaleChosen(QAction* action);
    void slot_mouseChosen(QAction* action);
    void slot_languageChosen(QAction* action);
    void slot_tabChosen(int index);
    void slot_cameraChosen(const CameraRecord* camera);
    void slot_previousPage();
    void slot_nextPage();
    void slot_fullScreen();
    void slot_about();

private:
    void AddTab(DeckTab* tab, const QString& title);
    void FillCameras(const ClientOptions& options);
    void BuildPanels();
    void BuildMenus();
    QMenu* AddChoices(const QString& title, const char* slot, const QList<QPair<QString, QVariant>>& choices,
                      const QVariant& checked);

    CameraList m_cameras;
    CameraHub* m_pHub;
    CameraTree* m_pTree = nullptr;
    QTabWidget* m_pTabs = nullptr;
    LiveTab* m_pLive = nullptr;
    EventLog* m_pLog = nullptr;
    ClientArchive* m_pArchive = nullptr;
};
