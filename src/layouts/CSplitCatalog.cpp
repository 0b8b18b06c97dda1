#include "layouts/CSplitCatalog.h"

#include "layouts/BuiltInLayouts.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

namespace {

CSplitCatalog* s_pCatalog = nullptr;

QString DirectoryBesideApplication(const QString& relative)
{
    QDir dir(QCoreApplication::applicationDirPath());
    return dir.cd(relative) ? dir.absolutePath() : QString();
}

int StyleOf(const QString& configPath)
{
    QSettings settings(configPath, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    settings.beginGroup("style");
    const int style = settings.value("style").toInt();
    return style == 1 || style == 2 ? style : 0;
}

QString StyleDirectoryName(int styleId)
{
    if (styleId == 1)
        return "ResourcesBlank";
    return styleId == 2 ? "ResourcesWhite" : "";
}

} // namespace

CSplitCatalog* CSplitCatalog::Instance()
{
    if (!s_pCatalog)
        s_pCatalog = new CSplitCatalog;
    return s_pCatalog;
}

void CSplitCatalog::Release()
{
    delete s_pCatalog;
    s_pCatalog = nullptr;
}

CSplitCatalog::CSplitCatalog()
{
    organizationDir = DirectoryBesideApplication("../Organization/");
    styleId = StyleOf(organizationDir + "/Config.ini");
    const QString style = StyleDirectoryName(styleId);
    resourceDir = DirectoryBesideApplication("../" + style + "/");
    qssDir = DirectoryBesideApplication("../" + style + "/Qss/");
    splitFilePath = organizationDir + "/SplitInfo.xml";
}

void CSplitCatalog::LoadLayouts()
{
    LoadDefaults();
}

const SplitLayout& CSplitCatalog::Layout(int type, int index) const
{
    return type == 0 ? normalLayouts[index] : customLayouts[index];
}

void CSplitCatalog::LoadDefaults()
{
    for (int i = 0; i < LayoutCount; ++i) {
        normalLayouts[i] = BuiltInLayout(i);
        customLayouts[i] = normalLayouts[i];
    }
}
