#include "PictureWriter.h"
#include "SheetWriter.h"
#include "SkinFiles.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

void MakeSheets(const QStringList& sheets, const QString& source, const QString& target,
                const SkinTokens& tokens)
{
    SheetWriter writer(source + "/sheets", tokens);
    for (const QString& sheet : sheets)
        WriteText(target + "/" + sheet, writer.Sheet(sheet));
}

void MakeDirectory(QSettings& list, const QString& source, const QString& target, const SkinTokens& tokens)
{
    MakeSheets(list.value("sheets").toStringList(), source, target, tokens);
    const PictureWriter writer(source, target, tokens, list.value("colors").toString());
    const QStringList checkable = list.value("checkable").toStringList();
    for (const QString& glyph : list.value("glyphs").toStringList())
        writer.WriteGlyph(glyph, checkable.contains(glyph));
    for (const QString& picture : list.value("pictures").toStringList())
        writer.WritePicture(picture, false);
    for (const QString& picture : list.value("doubled").toStringList())
        writer.WritePicture(picture, true);
    for (const QString& picture : list.value("sharp").toStringList())
        writer.WriteSharpPicture(picture);
    for (const QString& button : list.value("buttons").toStringList())
        writer.WriteButton(button);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 5)
        GiveUp("usage: skin_maker <sources> <list> <target> <tokens>...");
    const SkinTokens tokens(arguments.mid(4));
    QSettings list(arguments.at(2), QSettings::IniFormat);
    if (list.childGroups().isEmpty())
        GiveUp("nothing to make in " + arguments.at(2));
    for (const QString& directory : list.childGroups()) {
        list.beginGroup(directory);
        MakeDirectory(list, arguments.at(1), arguments.at(3) + "/" + directory, tokens);
        list.endGroup();
    }
    return 0;
}
