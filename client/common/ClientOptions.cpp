#include "common/ClientOptions.h"

#include "cameras/RelayAccess.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

constexpr char SourceOption[] = "source";
constexpr char SyntheticOption[] = "synthetic";
constexpr char CamerasOption[] = "cameras";
constexpr char IndexOption[] = "index";
constexpr char RelayOption[] = "relay";
constexpr char LanguageOption[] = "language";
constexpr char PicturesOption[] = "pictures";
constexpr char LogOption[] = "log";
constexpr char PlacesOption[] = "places";
constexpr char ArchiveOption[] = "archive";
constexpr char ArchiveLimitOption[] = "archive-limit";
constexpr char ArchiveDaysOption[] = "archive-days";
constexpr char DecodeOption[] = "decode";
constexpr char ViewOption[] = "view";
constexpr char FullScreenOption[] = "full-screen";
constexpr char LockOption[] = "lock";

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription("Shows live and recorded video in a deck of panes.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {SourceOption,
         "A camera: a file, a URL, a capture device (v4l2:/dev/video0) or a graph (lavfi:testsrc). May be "
         "repeated. Then the user's own cameras are left alone. A second URL names a smaller stream of the "
         "same "
         "pictures, for small panes.",
         "NAME=URL[|URL]"},
        {SyntheticOption, "Play the built-in cameras; the user's own are left alone."},
        {CamerasOption, "Keep the cameras in FILE, and their passwords beside it, not in the user's own.",
         "FILE"},
        {IndexOption,
         "Show the cameras and recordings of the index that several recorders share. May be repeated: then "
         "NAME is that of the site in the tree. The password belongs into libpq's service or password file.",
         "[NAME=]postgresql://USER@HOST/DATABASE"},
        {RelayOption,
         "Have live pictures from where the index says that a relay hands them on, by the line USER:PASSWORD "
         "in a file of mode 0600, and from the cameras themselves where none answers.",
         "FILE"},
        {LanguageOption, "Language of this start: en, zh, es, de, fr or ar.", "CODE"},
        {PicturesOption, "Write pictures of the window in several layouts to DIR and end.", "DIR"},
        {LogOption, "Append the log of events to FILE.", "FILE"},
        {PlacesOption, "Keep in FILE where every named widget lies on the screen, for scripts.", "FILE"},
        {ArchiveOption, "Keep recordings below DIR.", "DIR"},
        {ArchiveLimitOption,
         "Keep no more than this many gigabytes of recordings, 8 at first; the oldest go.", "GB"},
        {ArchiveDaysOption, "Keep no recording for more than this many days.", "DAYS"},
        {ViewOption, "Show the view of that name.", "NAME"},
        {FullScreenOption, "Let the live pictures fill the screen."},
        {LockOption, "Fill the screen, and leave it only by the password of the settings."},
        {DecodeOption, "Decode by devices where there are any (auto), or by the processor alone (software).",
         "auto|software"},
    });
}

void addSource(ClientOptions& options, const QString& text)
{
    QString error;
    const std::optional<SourceAddress> source = SourceAddress::parse(text, &error);
    if (!source) {
        options.complaints.append(error + ": left out");
        return;
    }
    const auto hasItsName = [&](const SourceAddress& other) { return other.name() == source->name(); };
    if (std::any_of(options.sources.begin(), options.sources.end(), hasItsName))
        options.complaints.append(
            QString("source \"%1\": there is one of that name: left out").arg(source->name()));
    else
        options.sources.append(*source);
}

/// A number above 0; `value` stays as it is where there is none.
void setNumber(ClientOptions& options, const QCommandLineParser& parser, const QString& option,
               const QString& unit, std::optional<int>* value)
{
    const QString text = parser.value(option);
    const int number = text.toInt();
    if (number > 0)
        *value = number;
    else if (parser.isSet(option))
        options.complaints.append(QString("--%1 wants %2, not '%3': left out").arg(option, unit, text));
}

void setDecoding(ClientOptions& options, const QString& text)
{
    if (text == "auto" || text == "software")
        options.usesDevices = text == "auto";
    else if (!text.isEmpty())
        options.complaints.append(QString("--decode wants auto or software, not '%1': left out").arg(text));
}

void setRelay(ClientOptions& options, const QString& path)
{
    QString error;
    if (const auto logins = RelayAccess::readLogins(path, &error))
        options.relayLogin = logins->first();
    else
        options.complaints.append(error + ": left out");
}

} // namespace

void addSite(ClientOptions& options, const QString& text)
{
    QString error;
    const std::optional<SiteAddress> site = SiteAddress::parse(text, &error);
    const auto hasItsName = [&](const SiteAddress& other) { return other.name == site->name; };
    if (site && std::any_of(options.sites.begin(), options.sites.end(), hasItsName))
        error = QString("index \"%1\": there is one of that name").arg(site->name);
    if (error.isEmpty())
        options.sites.append(*site);
    else
        options.complaints.append(error + ": left out");
}

ClientOptions parseClientOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    ClientOptions options;
    if (!parser.parse(QStringList("panedeck-client") + arguments))
        options.complaints.append(parser.errorText());
    for (const QString& word : parser.positionalArguments())
        options.complaints.append(QString("'%1' is no option: left out").arg(word));
    for (const QString& text : parser.values(SourceOption))
        addSource(options, text);
    options.isSynthetic = parser.isSet(SyntheticOption);
    options.camerasPath = parser.value(CamerasOption);
    for (const QString& text : parser.values(IndexOption))
        addSite(options, text);
    if (parser.isSet(RelayOption))
        setRelay(options, parser.value(RelayOption));
    options.language = parser.value(LanguageOption);
    options.picturesDir = parser.value(PicturesOption);
    options.logPath = parser.value(LogOption);
    options.placesPath = parser.value(PlacesOption);
    options.archiveDir = parser.value(ArchiveOption);
    setNumber(options, parser, ArchiveLimitOption, "gigabytes", &options.archiveGigabytes);
    setNumber(options, parser, ArchiveDaysOption, "days", &options.archiveDays);
    setDecoding(options, parser.value(DecodeOption));
    options.view = parser.value(ViewOption);
    options.isLocked = parser.isSet(LockOption);
    options.isFullScreen = parser.isSet(FullScreenOption) || options.isLocked;
    options.help = parser.isSet("help") || parser.isSet("help-all");
    options.version = parser.isSet("version");
    return options;
}

QString clientHelp()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText();
}
