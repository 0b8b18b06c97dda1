#include <CPaneDeck.h>

#include <QApplication>
#include <QPainter>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int Pane = 0;
constexpr int SecondsOfDay = 86400;
constexpr QRgb Nothing = 0xff808080;
constexpr QRgb Recorded = 0xff3070d0;
constexpr QRgb Alarm = 0xffd03030;

/// The day's colours: grey where nothing was recorded.
QVector<QRgb> segments()
{
    QVector<QRgb> colors(SecondsOfDay, Nothing);
    const auto paint = [&colors](int fromMinute, int toMinute, QRgb color) {
        std::fill(colors.begin() + fromMinute * 60, colors.begin() + toMinute * 60, color);
    };
    paint(8 * 60, 12 * 60, Recorded);
    paint(10 * 60 + 15, 10 * 60 + 40, Alarm);
    paint(14 * 60, 18 * 60, Recorded);
    return colors;
}

/// Plays a day that is made up on the way.
class Player : public QObject
{
public:
    explicit Player(CPaneDeck& deck) : m_deck(deck), m_segments(segments())
    {
        deck.SetTimerPeriod(m_segments);
        connect(&deck, &CPaneDeck::sig_TimerSliderReleased, this, [this] { seek(m_deck.SelectedTime()); });
        connect(&deck, &CPaneDeck::sig_TimerSliderdbClicked, this, [this] { seek(m_deck.SelectedTime()); });
        connect(&deck, &CPaneDeck::sig_OnWndBtnClick, this,
                [this](int, Btn_type_EX button) { press(button); });
        connect(&m_timer, &QTimer::timeout, this, &Player::step);
        m_timer.setInterval(40);
        setSpeed(1024);
        seek(QTime(8, 0));
    }

    void seek(QTime time)
    {
        m_second = QTime(0, 0).secsTo(time);
        show();
    }

    void press(Btn_type_EX button)
    {
        if (button == BTN_PLAY)
            play(!m_timer.isActive());
        else if (button == BTN_STOP)
            play(false);
        else if (button == BTN_QUICK)
            setSpeed(std::min(m_speed * 2, 8192));
        else if (button == BTN_SLOW)
            setSpeed(std::max(m_speed / 2, 128));
    }

private:
    void play(bool on)
    {
        on ? m_timer.start() : m_timer.stop();
        m_deck.SetWndBtnState(Pane, BTN_PLAY, on);
    }

    void setSpeed(int speed)
    {
        m_speed = speed;
        m_deck.SetSpeedInfo(Pane, speed);
    }

    void step()
    {
        m_second = std::min(m_second + m_speed / 1024.0 * m_timer.interval() / 1000, SecondsOfDay - 1.0);
        show();
    }

    /// The thumb goes along, unless the user holds it.
    void show()
    {
        const QTime time = QTime(0, 0).addSecs(int(m_second));
        m_deck.SetSelectedTime(time);
        const QRgb color = m_segments[int(m_second)];
        QImage frame(640, 360, QImage::Format_RGB32);
        frame.fill(color == Nothing ? Qt::black : QColor(color).darker());
        QPainter painter(&frame);
        painter.setPen(Qt::white);
        painter.setFont(QFont(QString(), 40));
        painter.drawText(frame.rect(), Qt::AlignCenter, time.toString());
        painter.end();
        m_deck.SetFrame(Pane, frame);
    }

    CPaneDeck& m_deck;
    QVector<QRgb> m_segments;
    QTimer m_timer;
    double m_second = 0;
    int m_speed = 1024;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck::SetInstallation(PANEDECK_TREE,
                               QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    CPaneDeck::SetLanguageFile(PANEDECK_TREE "/languages/English.ini");
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.resize(900, 560);
    deck.SetShowWndNo(1); // makes pane 0 the active one, which the buttons act on
    deck.SetTitle(Pane, "Recording");
    deck.EnableRefresh(Pane, false);
    deck.show();

    Player player(deck);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--once") {
        player.seek(QTime(10, 20));
        for (Btn_type_EX button : {BTN_QUICK, BTN_QUICK, BTN_PLAY})
            player.press(button);
        QTimer::singleShot(600, &deck, [&] {
            deck.grab().save(arguments.value(2, "playback.png"));
            application.quit();
        });
    }
    return application.exec();
}
