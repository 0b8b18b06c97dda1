#include <CPaneDeck.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck::SetInstallation(PANEDECK_TREE,
                               QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 16);
    QObject::connect(&deck, &CPaneDeck::sig_activeWnd,
                     [&deck](int pane) { deck.SetMessage(pane, QString("pane %1").arg(pane + 1)); });
    deck.resize(800, 600);
    deck.SetShowWndNo(4);
    deck.show();

    QImage frame(320, 240, QImage::Format_RGB32);
    frame.fill(QColor(96, 128, 160));
    deck.SetFrame(2, frame);

    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--once") {
        QTimer::singleShot(100, &deck, [&] {
            deck.grab().save(arguments.value(2, "minimal.png"));
            application.quit();
        });
    }
    return application.exec();
}
