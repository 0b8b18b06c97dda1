#include "ClientSkin.h"
#include "Scene.h"

#include "deck/CPaneDeck.h"
#include "layouts/CSplitCatalog.h"

#include <QApplication>
#include <QDir>
#include <cstdio>

namespace {

/// Takes a skin without the configuration that would name it.
void UseSkin(const QString& skin)
{
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QString root = QDir::cleanPath(QCoreApplication::applicationDirPath() + "/..");
    catalog->styleId = skin == "dark" ? 1 : 2;
    catalog->resourceDir = root + (skin == "dark" ? "/ResourcesBlank" : "/ResourcesWhite");
    catalog->qssDir = catalog->resourceDir + "/Qss";
    catalog->LoadLayouts();
    catalog->thumbnailSize = QSize(30, 30);
    ApplyClientSkin(root, catalog->styleId);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: gallery dark|light <directory> [scene]...\n");
        return 1;
    }
    QFont font = QApplication::font();
    font.setPixelSize(12);
    QApplication::setFont(font);
    CPaneDeck::SetLanguageFile(QString(LANGUAGES) + "/English.ini");
    UseSkin(arguments.at(1));
    const QStringList wanted = arguments.mid(3);
    for (const Scene& scene : Scenes()) {
        if (!wanted.isEmpty() && !wanted.contains(scene.name))
            continue;
        const QString path = arguments.at(2) + "/" + scene.name + "-" + arguments.at(1) + ".png";
        if (!scene.draw().save(path)) {
            std::fprintf(stderr, "can't save %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
