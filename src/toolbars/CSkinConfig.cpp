#include "toolbars/CSkinConfig.h"

#include "common/IniFile.h"
#include "common/Installation.h"

#include <QStringList>

namespace {

CSkinConfig* s_pSkin = nullptr;

} // namespace

CSkinConfig* CSkinConfig::Instance()
{
    if (!s_pSkin)
        s_pSkin = new CSkinConfig;
    return s_pSkin;
}

void CSkinConfig::Release()
{
    delete s_pSkin;
    s_pSkin = nullptr;
}

CSkinConfig::CSkinConfig()
{
    m_strIconPath = InstallationDirectory("Resources/icons");
    m_strRootPath = InstallationDirectory("../Resources");
    m_strResPath = InstallationDirectory("Resources");
    m_strButtonPath = InstallationDirectory("Resources/buttons");
    m_flushColor = QColor(249, 249, 249);
}

QString CSkinConfig::GetIconPath(const QString& strKey) const
{
    if (strKey.isEmpty())
        return m_strIconPath;
    const QString strName = IniFile(m_strIconPath + "/IconSetting.Conf").Value("PTZ/" + strKey).toString();
    return strName.isEmpty() ? QString() : m_strIconPath + "/" + strName;
}

void CSkinConfig::LoadBarStyle()
{
    const IniFile file(m_strResPath + "/OEMStyle.conf");
    const auto value = [&](const char* name) { return file.Value(QString("PaneDeck_MonitoBar/") + name); };
    m_nBarPlace = value("BarPlace").toInt();
    m_nBarHeight = value("BarHeight").toInt();
    m_nContentSpace = value("ContentSpace").toInt();
    m_nStopBtnMinWidth = value("stopbtnMinWidth").toInt();
    m_nStopBtnMaxWidth = value("stopbtnMaxWidth").toInt();
    m_nStopBtnHeight = value("stopbtnHeight").toInt();
    m_nOneScreenBtnWidth = value("OneScreenbtnWidth").toInt();
    m_nOneScreenBtnHeight = value("OneScreenbtnHeight").toInt();
    m_strBarStyle = value("style").toString();
}

void CSkinConfig::LoadWidgetStyle()
{
    const IniFile file(m_strResPath + "/OEMStyle.conf");
    ParseColor(file.Value("PaneDeck_Widget/flushColor").toString(), m_flushColor);
    m_strTitleStyle = file.Value("PaneDeck_Widget/titleStyle").toString();
    m_strWidgetStyle = file.Value("PaneDeck_Widget/style").toString();
}

void CSkinConfig::ParseColor(const QString& strColor, QColor& color)
{
    const QStringList parts = strColor.split(':');
    if (parts.size() != 3)
        return;
    int values[3];
    for (int i = 0; i < 3; ++i) {
        bool bNumber = false;
        values[i] = qBound(0, parts.at(i).toInt(&bNumber, 10), 255);
        if (!bNumber)
            return;
    }
    color.setRed(values[0]);
    color.setGreen(values[1]);
    color.setBlue(values[2]);
}

QString CSkinConfig::GetConfValue(const QString& strKey, const QString& strFile) const
{
    return IniFile(m_strResPath + "/" + strFile).Value(strKey).toString();
}

QString CSkinConfig::BuildButtonStyle(const QString& strSection, bool bHideMenuIndicator,
                                      const QString& strFile) const
{
    const IniFile file(m_strButtonPath + "/" + strFile);
    const auto path = [&](const char* name) {
        return m_strButtonPath + "/" + file.Value(strSection + name).toString();
    };
    QString strStyle = QString("QToolButton{background-image:url(%1);}"
                               "QToolButton:hover{background-image:url(%2);}"
                               "QToolButton:checked{background-image:url(%3);}"
                               "QToolButton:disabled{background-image:url(%4);}")
                           .arg(path("/Normal"), path("/Hover"), path("/Check"), path("/Disable"));
    if (bHideMenuIndicator)
        strStyle += "QToolButton::menu-indicator {image: None;}";
    return strStyle;
}
