#include <CPaneDeck.h>

#include <QApplication>
#include <QPainter>
#include <QTimer>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

namespace {

constexpr int CameraCount = 9;

/// A camera that looks at a chessboard. The window steers it, the thread takes its pictures.
struct Camera
{
    std::atomic<int> x{0};
    std::atomic<int> y{0};
    std::atomic<int> command{-1};

    void move()
    {
        static constexpr int Steps[][2] = {{0, 0},   {0, -1}, {0, 1},  {-1, 0}, {1, 0},
                                           {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
        const int now = command;
        if (now < 0 || now > 8)
            return;
        x += 4 * Steps[now][0];
        y += 4 * Steps[now][1];
    }

    QImage picture(int number, int count) const
    {
        constexpr int Square = 80;
        QImage image(640, 360, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(number * 40, 160, 110));
        QPainter painter(&image);
        painter.translate(-((x % 160) + 160) % 160 - Square, -((y % 160) + 160) % 160 - Square);
        for (int i = 0; i < 12 * 8; ++i) {
            if ((i % 12 + i / 12) % 2)
                painter.fillRect(i % 12 * Square, i / 12 * Square, Square, Square,
                                 QColor::fromHsv(number * 40, 120, 150));
        }
        painter.resetTransform();
        painter.fillRect(count * 5 % 640, 340, 40, 20, Qt::white);
        return image;
    }
};

/// Takes a picture of each camera 25 times a second, until it is told to end.
class Feed
{
public:
    Feed(CPaneDeck& deck, std::array<Camera, CameraCount>& cameras)
        : m_thread([this, &deck, &cameras] { run(deck, cameras); })
    {
    }

    ~Feed()
    {
        m_end = true;
        m_thread.join();
    }

private:
    void run(CPaneDeck& deck, std::array<Camera, CameraCount>& cameras)
    {
        for (int count = 0; !m_end; ++count) {
            for (int i = 0; i < CameraCount; ++i) {
                cameras[i].move();
                deck.PostFrame(i, cameras[i].picture(i, count));
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(40));
        }
    }

    std::atomic<bool> m_end{false};
    std::thread m_thread;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck::SetInstallation(PANEDECK_TREE, LAYOUTS);
    CPaneDeck::SetLanguageFile(PANEDECK_TREE "/languages/English.ini");
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, CameraCount);
    std::array<Camera, CameraCount> cameras;
    for (int i = 0; i < CameraCount; ++i) {
        deck.SetTitle(i, QString("Camera %1").arg(i + 1));
        deck.SetFunctionParam(i, 1);
        deck.EnableRefresh(i, false); // in use: the mouse brings up the title bar
    }
    QObject::connect(&deck, &CPaneDeck::sig_SendPtzCommand, [&](int pane, int command, int type) {
        cameras[pane].command = type == 0 ? command : -1;
    });
    QObject::connect(&deck, &CPaneDeck::sig_OnWndBtnClick,
                     [](int pane, Btn_type_EX button) { qInfo("pane %d: button %d", pane, int(button)); });
    deck.resize(960, 590);
    deck.slot_changePageNo(1, 0); // the first custom layout, from layouts/SplitInfo.xml
    deck.show();

    const Feed feed(deck, cameras); // ends before the deck does
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--once") {
        emit deck.sig_SendPtzCommand(0, 8, 0);
        QTimer::singleShot(1500, &deck, [&] {
            deck.grab().save(arguments.value(2, "wall.png"));
            application.quit();
        });
    }
    return application.exec();
}
