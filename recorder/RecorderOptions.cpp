#include "RecorderOptions.h"

#include "cameras/CameraFile.h"
#include "cameras/CameraPasswords.h"
#include "cameras/PrivateFile.h"
#include "cameras/RelayAccess.h"
#include "fleet/FleetIndex.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>

#include <algorithm>

namespace {

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription("Records cameras without a window, until it is told to end.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {"source",
         "A camera: a file, a URL, a capture device (v4l2:/dev/video0) or a graph (lavfi:testsrc). May be "
         "repeated. A second URL names a smaller stream, in which motion is looked for.",
         "NAME=URL[|URL]"},
        {"cameras", "Record the cameras of FILE, at first those of the user's client.", "FILE"},
        {"passwords",
         "The passwords of cameras. At first they come from the keyring, or else from the service's "
         "credential "
         "passwords.json or the file of that name beside the cameras' own.",
         "FILE"},
        {"password", "Read the password of a camera from the standard input, keep it and end.", "NAME"},
        {"archive", "Keep recordings below DIR.", "DIR"},
        {"archive-limit", "Keep no more than this many gigabytes of recordings, 8 at first; the oldest go.",
         "GB"},
        {"archive-days", "Keep no recording for more than this many days.", "DAYS"},
        {"decode", "Decode by devices where there are any (auto), or by the processor alone (software).",
         "auto|software", "auto"},
        {"index",
         "Record the cameras that a shared index gives to this recorder, and tell it what was recorded. The "
         "password belongs into libpq's service or password file.",
         "postgresql://USER@HOST/DATABASE"},
        {"name", "What this recorder is called in the shared index; the machine's name at first.", "NAME"},
        {"site", "Record the cameras of this site, and those of none.", "SITE"},
        {"url", "Where others read this archive: a directory, or a URL of file, http or https.", "URL"},
        {"live", "Where panedeck-relay hands on what is live of these cameras.", "rtsp://HOST:PORT"},
        {"migrate", "Make the shared index one of this version, and end."},
        {"rebuild", "Make the index of the recordings anew from their files, and end."},
    });
}

void addSource(RecorderOptions& options, const QString& text)
{
    QString error;
    const std::optional<SourceAddress> source = SourceAddress::parse(text, &error);
    const auto hasItsName = [&](const SourceAddress& other) { return other.name() == source->name(); };
    if (!source)
        options.complaints.append(error);
    else if (std::any_of(options.sources.begin(), options.sources.end(), hasItsName))
        options.complaints.append(QString("there are two sources of the name \"%1\"").arg(source->name()));
    else
        options.sources.append(*source);
}

/// A number above 0, or what was there before.
qint64 number(RecorderOptions& options, const QCommandLineParser& parser, const QString& option,
              qint64 before)
{
    const int number = parser.value(option).toInt();
    if (parser.isSet(option) && number <= 0)
        options.complaints.append(QString("--%1 wants a number, not '%2'").arg(option, parser.value(option)));
    return number > 0 ? number : before;
}

void setPasswords(RecorderOptions& options, const QCommandLineParser& parser)
{
    options.hasPasswordsFile = parser.isSet("passwords");
    options.passwordsPath =
        options.hasPasswordsFile
            ? parser.value("passwords")
            : credentialFile("passwords.json", CameraPasswords::pathBeside(options.camerasPath));
    options.passwordOf = parser.value("password");
    if (parser.isSet("password") && (options.passwordOf.isEmpty() || !options.sources.isEmpty()))
        options.complaints.append("--password wants the name of a camera that is in a list");
}

void setFleet(RecorderOptions& options, const QCommandLineParser& parser)
{
    QString error;
    if (parser.isSet("index"))
        options.index = FleetAddress::parse(parser.value("index"), &error);
    if (!error.isEmpty())
        options.complaints.append(error);
    options.migrate = parser.isSet("migrate");
    if (options.migrate && !parser.isSet("index"))
        options.complaints.append("--migrate wants the shared index: name it with --index");
    if (options.index && !options.sources.isEmpty())
        options.complaints.append("what to record is named by the shared index or by --source, not by both");
    options.name = parser.isSet("name") ? parser.value("name") : QSysInfo::machineHostName();
    options.site = parser.value("site");
    options.url =
        parser.isSet("url") ? parser.value("url") : QFileInfo(options.archiveDir).absoluteFilePath();
    options.live = parser.value("live");
    if (parser.isSet("live") && !RelayAccess::isRelay(options.live))
        options.complaints.append("--live wants rtsp://HOST:PORT, without a user");
    if (!FleetPlace(options.url).isKnown())
        options.complaints.append("--url wants a directory, or a URL of file, http or https");
}

} // namespace

RecorderOptions parseRecorderOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    RecorderOptions options;
    if (!parser.parse(QStringList("panedeck-recorder") + arguments))
        options.complaints.append(parser.errorText());
    for (const QString& word : parser.positionalArguments())
        options.complaints.append(QString("'%1' is no option").arg(word));
    for (const QString& text : parser.values("source"))
        addSource(options, text);
    options.camerasPath = parser.value("cameras");
    if (options.camerasPath.isEmpty() && options.sources.isEmpty())
        options.camerasPath = CameraFile::userPath();
    options.archiveDir = parser.isSet("archive")
                             ? parser.value("archive")
                             : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                                   "/PaneDeck/panedeck-client/archive";
    options.limits.bytes = number(options, parser, "archive-limit", options.limits.bytes >> 30) << 30;
    options.limits.days = int(number(options, parser, "archive-days", 0));
    options.usesDevices = parser.value("decode") != "software";
    if (options.usesDevices && parser.value("decode") != "auto")
        options.complaints.append(
            QString("--decode wants auto or software, not '%1'").arg(parser.value("decode")));
    setFleet(options, parser);
    setPasswords(options, parser);
    options.rebuild = parser.isSet("rebuild");
    options.help = parser.isSet("help") || parser.isSet("help-all");
    options.version = parser.isSet("version");
    return options;
}

QString recorderHelp()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText();
}
