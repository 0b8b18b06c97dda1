#include "FleetDuty.h"
#include "PasswordEntry.h"
#include "Recorder.h"
#include "RecorderOptions.h"
#include "cameras/CameraFile.h"
#include "common/QuitSignals.h"
#include "common/SmallHeap.h"
#include "source/SourceThread.h"
#include "source/SystemDevice.h"

#include <PaneDeckVersion.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int WrongUse = 2;

int run(const RecorderOptions& options)
{
    if (options.rebuild)
        return rebuildIndex(options.archiveDir);
    if (!options.passwordOf.isEmpty())
        return keepPassword(options);
    if (options.migrate)
        return migrateIndex(*options.index);
    const QuitSignals quitSignals;
    if (options.usesDevices)
        useSystemDevices();
    QString error;
    if (!options.camerasPath.isEmpty() && !options.index && !CameraFile(options.camerasPath).read(&error)) {
        tell(error);
        return WrongUse;
    }
    const Recorder recorder(options);
    return QCoreApplication::exec();
}

/// A source that hangs in the system holds its thread: the program then goes without a farewell.
int leave(int result)
{
    constexpr int PatienceMs = 500;
    if (!waitForSourceThreads(PatienceMs))
        std::_Exit(result);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    keepHeapSmall();
    QCoreApplication application(argc, argv);
    RecorderOptions options = parseRecorderOptions(QCoreApplication::arguments().mid(1));
    if (options.help || options.version) {
        std::fputs(options.help ? qPrintable(recorderHelp()) : PANEDECK_VERSION "\n", stdout);
        return 0;
    }
    const bool hasFile = !options.camerasPath.isEmpty() && CameraFile(options.camerasPath).exists();
    const bool isGiven = options.index || !options.complaints.isEmpty();
    if (options.sources.isEmpty() && !hasFile && !options.rebuild && !isGiven)
        options.complaints.append("there is nothing to record: name cameras with --source or --cameras");
    for (const QString& complaint : qAsConst(options.complaints))
        tell(complaint);
    return options.complaints.isEmpty() ? leave(run(options)) : WrongUse;
}
