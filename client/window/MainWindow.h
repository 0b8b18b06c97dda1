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

    LiveTab* live() const { return m_live; }

    /// The tab that is in front.
    DeckTab* current() const;
    EventLog* log() const { return m_log; }

private Q_SLOTS:
    void chooseLayout(QAction* action);
    void chooseScale(QAction* action);
    void chooseMouse(QAction* action);
    void keepLanguage(QAction* action);
    void bringBackDeck(int index);
    void showCamera(const CameraRecord* camera);
    void showPreviousPage();
    void showNextPage();
    void fillScreen();
    void tellAbout();

private:
    void addTab(DeckTab* tab, const QString& title);
    void fillCameras(const ClientOptions& options);
    void buildPanels();
    void buildMenus();
    QMenu* addChoices(const QString& title, void (MainWindow::*choose)(QAction*),
                      const QList<QPair<QString, QVariant>>& choices, const QVariant& checked);

    CameraList m_cameras;
    CameraHub* m_hub;
    CameraTree* m_tree = nullptr;
    QTabWidget* m_tabs = nullptr;
    LiveTab* m_live = nullptr;
    EventLog* m_log = nullptr;
    ClientArchive* m_archive = nullptr;
};
