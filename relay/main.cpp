#include "RelayList.h"
#include "RelayOptions.h"
#include "RelayServer.h"
#include "cameras/RelayAccess.h"
#include "common/QuitSignals.h"
#include "common/SmallHeap.h"

#include <PaneDeckVersion.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr int WrongUse = 2;

void tell(const QString& line)
{
    std::fprintf(stderr, "%s\n", qPrintable(line));
}

int fail(const QString& line)
{
    tell(line);
    return WrongUse;
}

int run(const RelayOptions& options)
{
    QString error;
    const auto logins = RelayAccess::readLogins(options.desksPath, &error);
    if (!logins)
        return fail(error);
    const QuitSignals quitSignals;
    RelayServer server(tell);
    server.setLogins(*logins);
    if (!server.listen(options.listenAt, options.port))
        return fail(QString("can't listen at %1:%2").arg(options.listenAt).arg(options.port));
    RelayList list(options);
    QObject::connect(&list, &RelayList::told, tell);
    QObject::connect(&list, &RelayList::ready, [&server](const QHash<QString, SourceAddress>& cameras) {
        server.setCameras(cameras);
        tell(QString("%1 streams can be looked at").arg(cameras.size()));
    });
    list.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    keepHeapSmall();
    QCoreApplication application(argc, argv);
    const RelayOptions options = parseRelayOptions(QCoreApplication::arguments().mid(1));
    if (options.help || options.version) {
        std::fputs(options.help ? qPrintable(relayHelp()) : PANEDECK_VERSION "\n", stdout);
        return 0;
    }
    for (const QString& complaint : options.complaints)
        tell(complaint);
    if (!options.complaints.isEmpty())
        return WrongUse;
    gst_init(nullptr, nullptr);
    return run(options);
}
