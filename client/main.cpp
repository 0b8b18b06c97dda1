#include "archive/RecordingAccess.h"
#include "cameras/CameraFile.h"
#include "common/ClientInstallation.h"
#include "common/ClientOptions.h"
#include "common/ClientSettings.h"
#include "common/EventLog.h"
#include "common/Look.h"
#include "common/PlaceWriter.h"
#include "common/QuitSignals.h"
#include "common/RelayLogin.h"
#include "common/SettingsGuard.h"
#include "common/SmallHeap.h"
#include "source/SourceThread.h"
#include "source/SystemDevice.h"
#include "window/MainWindow.h"
#include "window/PictureMaker.h"

#include <CPaneDeck.h>
#include <PaneDeckVersion.h>

#include <QApplication>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace {

void tell(const QString& line)
{
    std::fprintf(stderr, "panedeck-client: %s\n", qPrintable(line));
}

void tellMissingDirectories()
{
    for (const QString& name : ClientInstallation::missing())
        tell(QString("the installation has no %1 directory; going on without it").arg(name));
}

/// Whoever names cameras in another way means those.
void addKeptSites(ClientOptions& options)
{
    const bool isOther = options.isSynthetic || !options.sources.isEmpty() || !options.sites.isEmpty() ||
                         !options.camerasPath.isEmpty() || !options.picturesDir.isEmpty();
    const QStringList indexes = isOther ? QStringList() : ClientSettings::load().indexes;
    const int told = int(options.complaints.size());
    for (const QString& index : indexes)
        addSite(options, index);
    QString error;
    if (!options.relayLogin && !indexes.isEmpty())
        options.relayLogin = RelayLogin::load(&error);
    if (!error.isEmpty())
        options.complaints.append(error + ": left out");
    for (int i = told; i < options.complaints.size(); ++i)
        tell(options.complaints.at(i));
}

/// What calls exit() while the loop runs, as the platform does when the screen's server has gone, ends the
/// program at once: threads still use what exit() takes away.
int runLoop(QApplication& application)
{
    static bool isRunning = true;
    std::atexit([] {
        if (isRunning)
            std::_Exit(EXIT_FAILURE);
    });
    const int result = application.exec();
    isRunning = false;
    return result;
}

int run(QApplication& application, ClientOptions options)
{
    const QuitSignals quitSignals;
    tellMissingDirectories();
    if (const QString aside = setUnsafeSettingsAside(); !aside.isEmpty())
        tell("the settings could not be trusted, and lie in " + aside);
    addKeptSites(options);
    CPaneDeck::SetInstallation(ClientInstallation::path(QString()), ClientInstallation::writableDirectory());
    const ClientSettings settings = ClientSettings::of(options);
    if (settings.usesDevices)
        useSystemDevices();
    if (!applyLook(settings) && !options.language.isEmpty())
        tell(QString("there is no language '%1'").arg(options.language));
    if (!options.sites.isEmpty())
        RecordingAccess::setDirectory(QFileInfo(CameraFile::userPath()).path());
    MainWindow window(options);
    if (!options.logPath.isEmpty() && !window.log()->writeTo(options.logPath))
        tell("can't write the log " + options.logPath);
    if (!options.placesPath.isEmpty())
        new PlaceWriter(options.placesPath, &window);
    window.show();
    if (options.isFullScreen)
        window.fillScreen(options.isLocked);
    if (!options.picturesDir.isEmpty())
        new PictureMaker(&window, options.picturesDir);
    return runLoop(application);
}

/// A source that hangs in the system holds its thread: the program then goes without a farewell.
int leave(int result)
{
    constexpr int PatienceMs = 1000;
    // Sources that were let go while the window went end now: no event loop comes to them any more.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!waitForSourceThreads(PatienceMs))
        std::_Exit(result);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    keepHeapSmall();
#if QT_VERSION_MAJOR < 6
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    QApplication::setOrganizationName("PaneDeck");
    QApplication::setApplicationName("panedeck-client");
    QApplication::setApplicationVersion(PANEDECK_VERSION);
    QApplication::setDesktopFileName("panedeck-client");
    QApplication::setWindowIcon(QIcon::fromTheme("panedeck-client", QIcon(":/panedeck-client.svg")));
    const ClientOptions options = parseClientOptions(QApplication::arguments().mid(1));
    for (const QString& complaint : options.complaints)
        tell(complaint);
    if (options.help)
        std::fputs(qPrintable(clientHelp()), stdout);
    else if (options.version)
        std::puts(PANEDECK_VERSION);
    else
        return leave(run(application, options));
    return 0;
}
