#include <CDeviceTreeWidget.h>
#include <CPaneDeck.h>
#include <PaneDeckVersion.h>

#include <QApplication>
#include <QFile>

/// Fails where the skin doesn't lie beside the program's own directory.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QString data = QCoreApplication::applicationDirPath() + "/../share/panedeck";
    CPaneDeck::SetInstallation(data, QString());
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.SetShowWndNo(4);
    CDeviceTreeWidget tree;
    for (const char* name :
         {"/Organization/Config.ini", "/ResourcesBlank", "/Resources/buttons", "/languages/German.ini"}) {
        if (!QFile::exists(data + name))
            qFatal("no %s", name);
    }
    return 0;
}
