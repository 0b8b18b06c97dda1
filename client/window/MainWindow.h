#pragma once

#include "cameras/CameraList.h"
#include "common/ClientSettings.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class AlarmCenter;
class CameraActions;
class CameraHub;
class CameraTree;
class ClientArchive;
class EventLog;
class FleetAlarms;
class FleetDesk;
class DeckTab;
class LiveTab;
class QSplitter;
class QStackedWidget;
class QTabWidget;
class SecondWindows;
struct SiteAddress;
class TabPage;
class ViewList;
class MainMenus;
class WelcomePage;
struct ClientOptions;

/// The client's window: cameras on the left, the deck, and the log of events below, which folds away.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(const ClientOptions& options);
    ~MainWindow() override;

    LiveTab* live() const { return m_live; }
    ViewList* views() const { return m_views; }
    SecondWindows* secondWindows() const { return m_windows; }

    /// The tab that is in front.
    DeckTab* current() const;

    /// The tabs that have been needed so far, those of second windows too.
    QVector<DeckTab*> tabs() const;
    CameraActions* cameraActions() const { return m_cameraActions; }
    EventLog* log() const { return m_log; }
    ClientArchive* archive() const { return m_archive; }
    AlarmCenter* alarms() const { return m_alarms; }
    const CameraList& cameras() const { return m_cameras; }

    /// Lets the live deck fill the screen; a locked one is left by the password only, if there is one.
    void fillScreen(bool locked);

public Q_SLOTS:
    /// Lets the user change the settings, and goes by them at once.
    void askForSettings();
    void keepRelay(const Login& before, const Login& now);
    /// The language alone.
    void changeLanguage(const QString& code);

    /// The live tab shows that view: it comes to the front, and again at the next start.
    void takeView(const QString& name);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void bringBackDeck(int index);
    void showCamera(const CameraRecord* camera);
    void playAlarm(const QString& cameraId, qint64 fromMs);
    void showAlarmCount();

private:
    void fillCameras(const ClientOptions& options);
    void joinFleet(const QVector<SiteAddress>& sites, const QString& camerasPath,
                   const std::optional<Login>& relayLogin);
    void openCameras(const QString& path, bool isFirstStart);
    void showWelcome();
    void buildWelcome();
    void buildPanels();
    void takeSettings(const ClientSettings& settings);
    void rebuild();
    DeckTab* makeAlarmTab();
    void openViews(const QString& view);
    void awaitView(const QString& name);
    void openWindows();
    void equip(LiveTab* live);
    void restorePlace();
    void comeBack();
    void keepPlace() const;
    TabPage* addTab(const QString& title, std::function<DeckTab*()> make);

    ClientSettings m_settings;
    CameraList m_cameras;
    CameraHub* m_hub;
    CameraTree* m_tree = nullptr;
    CameraActions* m_cameraActions = nullptr;
    QTabWidget* m_tabs = nullptr;
    QStackedWidget* m_middle = nullptr;
    WelcomePage* m_welcome = nullptr;
    QString m_trouble; ///< why the user's cameras are missing
    LiveTab* m_live = nullptr;
    EventLog* m_log = nullptr;
    ViewList* m_views = nullptr;
    SecondWindows* m_windows = nullptr;
    QSplitter* m_across = nullptr;
    QSplitter* m_down = nullptr;
    bool m_wasShown = false;
    std::unique_ptr<FleetDesk> m_fleet; ///< none for cameras of one's own
    ClientArchive* m_archive = nullptr;
    AlarmCenter* m_alarms = nullptr;
    std::unique_ptr<FleetAlarms> m_fleetAlarms; ///< none for cameras of one's own
    MainMenus* m_menus = nullptr;
    TabPage* m_alarmPage = nullptr;
    TabPage* m_playbackPage = nullptr;
};
