#include "Scene.h"
#include "common/ClientSkin.h"

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
    applyClientSkin(catalog->styleId);
}

void UseLanguage(const QString& language)
{
    CPaneDeck::SetLanguageFile(QString(LANGUAGES) + "/" + language + ".ini");
    if (language == "Arabic")
        QApplication::setLayoutDirection(Qt::RightToLeft);
}

/// Takes the pictures of the scenes named, or of all if none is.
bool TakePictures(const QStringList& wanted, const QString& directory, const QString& ending)
{
    for (const Scene& scene : Scenes()) {
        if (!wanted.isEmpty() && !wanted.contains(scene.name))
            continue;
        const QString path = directory + "/" + scene.name + ending + ".png";
        if (!scene.draw().save(path)) {
            std::fprintf(stderr, "can't save %s\n", qPrintable(path));
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
#if QT_VERSION_MAJOR < 6
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 4) {
        std::fprintf(stderr, "usage: panedeck_gallery dark|light <language> <directory> [scene]...\n");
        return 1;
    }
    QFont font = QApplication::font();
    font.setPixelSize(12);
    QApplication::setFont(font);
    UseLanguage(arguments.at(2));
    UseSkin(arguments.at(1));
    const QString ending =
        "-" + arguments.at(1) + (arguments.at(2) == "English" ? "" : "-" + arguments.at(2));
    return TakePictures(arguments.mid(4), arguments.at(3), ending) ? 0 : 1;
}
