#include "RelayOptions.h"

#include "cameras/CameraFile.h"
#include "cameras/CameraPasswords.h"
#include "cameras/PrivateFile.h"

#include <QCommandLineParser>

namespace {

constexpr int LastPort = 65535;

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription("Hands live pictures of cameras on to any number of desks, by one "
                                     "connection to each stream of a camera, until it is told to end.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {"cameras", "Hand on the cameras of FILE, at first those of the user's client.", "FILE"},
        {"index", "Hand on the cameras of a shared index.", "postgresql://USER@HOST/DATABASE"},
        {"passwords",
         "The passwords of cameras. At first they come from the keyring, or else from the service's "
         "credential passwords.json or the file of that name beside the cameras' own.",
         "FILE"},
        {"desks", "Who may look: lines USER:PASSWORD in a file of mode 0600.", "FILE"},
        {"listen", "Wait for desks at this address, 0.0.0.0:8554 at first.", "ADDRESS:PORT"},
    });
}

void setListen(RelayOptions& options, const QString& text)
{
    const int colon = text.lastIndexOf(':');
    const int port = text.mid(colon + 1).toInt();
    if (colon <= 0 || port <= 0 || port > LastPort) {
        options.complaints.append(QString("--listen wants ADDRESS:PORT, not '%1'").arg(text));
        return;
    }
    const QString host = text.left(colon);
    // One of IPv6, as it stands in a URL.
    options.listenAt = host.startsWith('[') && host.endsWith(']') ? host.mid(1, host.size() - 2) : host;
    options.port = port;
}

void setFiles(RelayOptions& options, const QCommandLineParser& parser)
{
    options.camerasPath = parser.isSet("cameras") ? parser.value("cameras") : CameraFile::userPath();
    options.hasPasswordsFile = parser.isSet("passwords");
    options.passwordsPath =
        options.hasPasswordsFile
            ? parser.value("passwords")
            : credentialFile("passwords.json", CameraPasswords::pathBeside(options.camerasPath));
    options.desksPath = parser.isSet("desks") ? parser.value("desks") : credentialFile("desks", {});
    if (options.desksPath.isEmpty())
        options.complaints.append("who may look is not said: name the file with --desks");
}

} // namespace

RelayOptions parseRelayOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    RelayOptions options;
    QString error;
    if (!parser.parse(QStringList("panedeck-relay") + arguments))
        options.complaints.append(parser.errorText());
    for (const QString& word : parser.positionalArguments())
        options.complaints.append(QString("'%1' is no option").arg(word));
    if (parser.isSet("index"))
        options.index = FleetAddress::parse(parser.value("index"), &error);
    if (!error.isEmpty())
        options.complaints.append(error);
    if (parser.isSet("listen"))
        setListen(options, parser.value("listen"));
    setFiles(options, parser);
    options.help = parser.isSet("help") || parser.isSet("help-all");
    options.version = parser.isSet("version");
    return options;
}

QString relayHelp()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText();
}
