#include "Scratch.h"
#include "toolbars/CPictureIcon.h"
#include "toolbars/CSkinConfig.h"
#include "toolbars/CVideoPicButton.h"

#include <QApplication>
#include <QDir>

namespace {

void ReadConfig(CSkinConfig& skin)
{
    skin.LoadBarStyle();
    skin.LoadWidgetStyle();
    if (!skin.m_flushColor.isValid() || skin.m_flushColor.alpha() != 255)
        abort();
    skin.GetIconPath("up");
    skin.BuildButtonStyle("PaneDeck_Switch_bar", true, "OEMStyle.conf");
}

void ParseAsColor(const uint8_t* data, size_t size)
{
    QColor color(1, 2, 3, 4);
    CSkinConfig::ParseColor(QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<int>(size)),
                            color);
    if (!color.isValid() || color.alpha() != 4)
        abort();
}

void ShowButtons(const QString& path, bool styleSheet)
{
    const QDir buttons(QCoreApplication::applicationDirPath());
    CVideoPicButton button;
    button.setCheckable(true);
    button.resize(20, 20);
    button.LoadPictures("PaneDeck_Switch_bar", styleSheet, buttons.relativeFilePath(path));
    for (int state = -1; state <= 8; ++state)
        button.ShowState(state);
    button.ensurePolished();
    CPictureIcon icon;
    icon.SetPicture("lock", styleSheet, "OEMStyle.conf");
    icon.ensurePolished();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    SilenceQt();
    new QApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static Scratch scratch;
    const QString path = scratch.Write("OEMStyle.conf", data, size);
    scratch.Write("IconSetting.Conf", data, size);
    CSkinConfig::Release();
    CSkinConfig* skin = CSkinConfig::Instance();
    skin->m_strResPath = skin->m_strButtonPath = skin->m_strIconPath = scratch.Path(QString());
    ReadConfig(*skin);
    ParseAsColor(data, size);
    ShowButtons(path, size % 2 == 0);
    return 0;
}
