#include <CPaneDeck.h>

#include <QApplication>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 16);
    QObject::connect(&deck, &CPaneDeck::sig_activeWnd,
                     [&deck](int pane) { deck.SetMessage(pane, QString("pane %1").arg(pane + 1)); });
    deck.resize(800, 600);
    deck.SetShowWndNo(4);
    deck.show();

    QVector<uchar> grey(320 * 240 * 3, 96);
    QMetaObject::invokeMethod(static_cast<QWidget*>(deck.GetHWND(2)), "slot_BufferChange",
                              Q_ARG(ulong, ulong(grey.data())), Q_ARG(int, 320), Q_ARG(int, 240));
    if (application.arguments().contains("--once"))
        QTimer::singleShot(0, &application, &QApplication::quit);
    return application.exec();
}
