#include "SimulatedDevice.h"

#include "common/QuitSignals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>

namespace {

Habits readHabits(const QCommandLineParser& parser)
{
    Habits habits;
    habits.user = parser.value("user");
    habits.password = parser.value("password");
    habits.authentication = parser.value("authentication");
    habits.name = parser.value("name");
    habits.foreignHost = parser.value("foreign-host");
    habits.isSecure = parser.value("scheme") == "https";
    habits.mood = parser.value("mood");
    habits.missing = parser.values("missing");
    habits.silentOn = parser.values("silent-on");
    habits.video = parser.value("video");
    habits.clockSeconds = parser.value("clock").toInt();
    habits.delayMs = parser.value("delay").toInt();
    habits.keepsSeconds = parser.value("keeps").toInt();
    habits.tokens = parser.value("tokens");
    habits.isChunked = parser.isSet("chunked");
    habits.hasEmptyProfiles = parser.isSet("empty-profiles");
    habits.takesOneListener = parser.isSet("one-listener");
    habits.media = parser.value("media");
    habits.sources = parser.value("sources").toInt();
    return habits;
}

} // namespace

/// A simulated ONVIF device as a program: its address is its first line, and then a line for each move and
/// stop.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QuitSignals quitSignals;
    QCommandLineParser parser;
    parser.addHelpOption();
    for (const auto& [name, value, what] : {std::array<const char*, 3>{"port", "0", "of HTTP"},
                                            {"scheme", "http", "or https"},
                                            {"user", "", "whoever asks has to be"},
                                            {"password", "", "of the user"},
                                            {"authentication", "token", "or text, digest or basic"},
                                            {"name", "Simulated camera", "in its scopes"},
                                            {"foreign-host", "", "told in place of its own"},
                                            {"mood", "", "silent, malformed, deep, endless, html or busy"},
                                            {"missing", "", "operation it hasn't got"},
                                            {"silent-on", "", "operation it does and never answers"},
                                            {"video", "", "file it serves as its streams"},
                                            {"clock", "0", "seconds that it is ahead"},
                                            {"delay", "0", "milliseconds before each answer"},
                                            {"keeps", "60", "seconds that a subscription lasts"},
                                            {"tokens", "", "before each profile's own"},
                                            {"media", "1", "or 2 for Media2 alone, 12 for both"},
                                            {"sources", "1", "number of video sources"},
                                            {"orders", "", "file whose new lines are events"},
                                            {"motion", "0", "seconds between two changes of motion"}})
        parser.addOption({name, what, name, value});
    parser.addOption({"chunked", "answers come in chunks"});
    parser.addOption({"empty-profiles", "some profiles have no pictures"});
    parser.addOption({"one-listener", "a second subscription is refused"});
    parser.process(application);
    SimulatedDevice device(readHabits(parser), quint16(parser.value("port").toUInt()));
    device.discover(3702);
    const auto say = [](const QString& line) {
        std::puts(qPrintable(line));
        std::fflush(stdout);
    };
    QObject::connect(&device, &SimulatedDevice::tellsLine, say);
    say(device.address());
    QTimer motion;
    bool moves = false;
    QObject::connect(&motion, &QTimer::timeout, [&] {
        device.report("RuleEngine/CellMotionDetector/Motion", "config1", moves = !moves);
    });
    QFile orders(parser.value("orders"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        while (!orders.atEnd()) {
            const QStringList words = QString(orders.readLine()).simplified().split(' ');
            if (words.size() == 3)
                device.report(words[0], words[1], words[2] == "1");
        }
    });
    if (orders.open(QIODevice::ReadOnly))
        look.start(50);
    if (const int seconds = parser.value("motion").toInt())
        motion.start(1000 * seconds);
    return QCoreApplication::exec();
}
