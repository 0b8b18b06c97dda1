#include "WindowFaults.h"
#include "WindowTexts.h"
#include "alarms/AlarmCenter.h"
#include "cameras/ClientArchive.h"
#include "common/ClientInstallation.h"
#include "common/ClientOptions.h"
#include "common/ClientSkin.h"
#include "common/Words.h"
#include "help/AboutWindow.h"
#include "help/KeysWindow.h"
#include "manager/CameraDialog.h"
#include "manager/CameraEdits.h"
#include "manager/FindCamerasDialog.h"
#include "manager/ManagerDialog.h"
#include "manager/SeveralDialog.h"
#include "manager/TrustQuestion.h"
#include "manager/WelcomePage.h"
#include "panes/PaneKeys.h"
#include "playback/ExportDialog.h"
#include "settings/SettingsDialog.h"
#include "source/SourceThread.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "tabs/TourDialog.h"
#include "tabs/TourPlan.h"
#include "views/ViewDialog.h"
#include "window/MainWindow.h"

#include <CPaneDeck.h>

#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QTemporaryDir>

#include <functional>

namespace {

const QString Mark = "‹";
const QSize Smallest(800, 600);
/// What such a window has for its middle.
const QSize WelcomeRoom(560, 430);

QString content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString languageFile(const QString& language)
{
    return QFINDTESTDATA("../../languages/" + language + ".ini");
}

/// A language whose every word is marked, beside what is the same in all of them.
QString pseudoLanguage(const QString& directory)
{
    QString text;
    const QStringList lines = content(languageFile("German")).split('\n');
    for (const QString& line : lines) {
        const QString key = line.section('=', 0, 0);
        text += line.contains('=') ? key + "=" + Mark + key + "›\n" : line + "\n";
    }
    QFile file(directory + "/Pseudo.ini");
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
    return file.fileName();
}

/// What takes its size from what has taken its own comes a round later.
void settle()
{
    constexpr int Rounds = 4;
    for (int i = 0; i < Rounds; ++i)
        QCoreApplication::processEvents();
}

} // namespace

/// All windows of the client: that each word has a translation, and that all has its room.
class tst_windows : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyTextIsAWordOfTheLanguage();
    void fitsASmallScreen_data();
    void fitsASmallScreen();
    void cleanupTestCase();

private:
    void setLanguage(const QString& path);
    void visit(const std::function<void(QWidget&)>& look);
    void visitDialogs(MainWindow& window, const std::function<void(QWidget&)>& look);

    QTemporaryDir m_directory;
};

void tst_windows::init()
{
    DeckTestCase::init();
    QVERIFY(m_directory.isValid());
}

void tst_windows::setLanguage(const QString& path)
{
    loadWords(path);
    CPaneDeck::ChangeLook(0, path);
    QApplication::setLayoutDirection(path.contains("Arabic") ? Qt::RightToLeft : Qt::LeftToRight);
}

/// The main window with each tab in front, then every dialog.
void tst_windows::visit(const std::function<void(QWidget&)>& look)
{
    const ExpectedWarning sheet("Specified color without alpha value but alpha given");
    const ExpectedWarning picture("Could not create pixmap from");
    ClientOptions options;
    options.isSynthetic = true;
    options.archiveDir = m_directory.path() + "/archive";
    MainWindow window(options);
    window.resize(Smallest);
    window.show();
    auto* tabs = window.findChild<QTabBar*>("Tabs");
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        settle();
        look(window);
    }
    visitDialogs(window, look);
}

void tst_windows::visitDialogs(MainWindow& window, const std::function<void(QWidget&)>& look)
{
    KeysWindow keys(nullptr);
    keys.addKeys(word("Menus"), PaneKeys::help());
    keys.addKeys(word("Playback"), KeysWindow::playback());
    AboutWindow about(nullptr);
    SettingsDialog settings({}, window.cameras(), {}, "/usual", "/usual", nullptr);
    CameraList cameras;
    CameraDescription camera;
    camera.name = "Tester";
    camera.onvifAddress = "https://192.168.1.20/onvif/device_service";
    camera.onvifCertificate = QString(64, 'a');
    CameraDialog cameraDialog(&cameras, camera, nullptr);
    CameraEdits edits(&cameras, nullptr);
    ManagerDialog manager(&cameras, &edits, nullptr);
    SeveralDialog several(&cameras, nullptr);
    FindCamerasDialog find(&cameras, nullptr);
    TrustQuestion trust("192.168.1.20", camera.onvifCertificate, nullptr);
    ViewDialog views(window.views(), window.live());
    TourDialog tour({}, window.cameras(), *window.views(), nullptr);
    const QDateTime noon(QDate(2024, 5, 6), QTime(12, 0));
    ExportDialog exports(window.archive(),
                         {{"Camera 01", "Camera 02"},
                          {"Camera 01"},
                          noon.toMSecsSinceEpoch(),
                          noon.addSecs(10).toMSecsSinceEpoch()},
                         nullptr);
    QAction first(word("&Cameras"));
    QAction second(word("&Cameras"));
    WelcomePage welcome(&first, &second);
    welcome.resize(WelcomeRoom);
    for (QWidget* dialog : QList<QWidget*>{&keys, &about, &settings, &cameraDialog, &manager, &several, &find, &trust,
                                           &views, &tour, &exports, &welcome}) {
        dialog->setAttribute(Qt::WA_DeleteOnClose, false);
        dialog->show();
        for (auto* bar : dialog->findChildren<QTabBar*>()) {
            for (int i = 0; i < bar->count(); ++i) {
                bar->setCurrentIndex(i);
                settle();
                look(*dialog);
            }
        }
        look(*dialog);
        dialog->hide();
    }
}

void tst_windows::everyTextIsAWordOfTheLanguage()
{
    setLanguage(pseudoLanguage(m_directory.path()));
    QCOMPARE(word("Settings"), Mark + "Settings›");
    QStringList found;
    visit([&found](QWidget& top) { found += untranslated(top, Mark); });
    found.removeDuplicates();
    QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
}

void tst_windows::fitsASmallScreen_data()
{
    QTest::addColumn<QString>("language");
    for (const char* language : {"English", "German", "French", "Spanish", "Chinese", "Arabic"})
        QTest::newRow(language) << language;
}

void tst_windows::fitsASmallScreen()
{
    QFETCH(QString, language);
    setLanguage(languageFile(language));
    const QString skin = ClientInstallation::path("ResourcesBlank");
    QVERIFY(QFileInfo(skin).isDir() || QFile::link(BUILT_SKIN, skin));
    applyClientSkin(1);
    // As large as desktops have it at first.
    QFont letters = QApplication::font();
    letters.setPointSize(11);
    QApplication::setFont(letters);
    QStringList found;
    visit([&found](QWidget& top) {
        const QSize least = top.minimumSizeHint();
        if (least.width() > Smallest.width() || least.height() > Smallest.height())
            found.append(QString("%1 wants %2 x %3")
                             .arg(top.objectName() + top.windowTitle())
                             .arg(least.width())
                             .arg(least.height()));
        found += windowFaults(top);
    });
    found.removeDuplicates();
    QVERIFY2(found.isEmpty(), qPrintable(found.join('\n')));
}

void tst_windows::cleanupTestCase()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(waitForSourceThreads(PatienceMs));
}

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("PaneDeck");
    QCoreApplication::setApplicationName("tst_windows");
    return RunTests<tst_windows>(argc, argv);
}

#include "tst_windows.moc"
