#include "toolbars/CSkinConfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QStringList>

namespace {

CSkinConfig* s_pSkin = nullptr;

QString DirectoryFrom(QDir dir, const QString& relative)
{
    return dir.cd(relative) ? dir.absolutePath() : QString();
}

QString StringIn(const QString& strFile, const QString& strKey)
{
    return strKey.isEmpty() ? QString() : QSettings(strFile, QSettings::IniFormat).value(strKey).toString();
}

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
    const QDir application(QCoreApplication::applicationDirPath());
    m_strIconPath = DirectoryFrom(application, "../Resources/icons/");
    m_strRootPath = DirectoryFrom(application, "../../Resources/");
    m_strResPath = DirectoryFrom(application, "../Resources/");
    m_strButtonPath = DirectoryFrom(application, "../Resources/buttons/");
    m_flushColor = QColor(249, 249, 249);
}

QString CSkinConfig::GetIconPath(const QString& strKey) const
{
    if (strKey.isEmpty())
        return m_strIconPath;
    const QString strName = StringIn(m_strIconPath + "/IconSetting.Conf", "PTZ/" + strKey);
    return strName.isEmpty() ? QString() : m_strIconPath + "/" + strName;
}

void CSkinConfig::LoadBarStyle()
{
    QSettings settings(m_strResPath + "/OEMStyle.conf", QSettings::IniFormat);
    settings.beginGroup("PaneDeck_MonitoBar");
    m_nBarPlace = settings.value("BarPlace").toInt();
    m_nBarHeight = settings.value("BarHeight").toInt();
    m_nContentSpace = settings.value("ContentSpace").toInt();
    m_nStopBtnMinWidth = settings.value("stopbtnMinWidth").toInt();
    m_nStopBtnMaxWidth = settings.value("stopbtnMaxWidth").toInt();
    m_nStopBtnHeight = settings.value("stopbtnHeight").toInt();
    m_nOneScreenBtnWidth = settings.value("OneScreenbtnWidth").toInt();
    m_nOneScreenBtnHeight = settings.value("OneScreenbtnHeight").toInt();
    m_strBarStyle = settings.value("style").toString();
}

void CSkinConfig::LoadWidgetStyle()
{
    QSettings settings(m_strResPath + "/OEMStyle.conf", QSettings::IniFormat);
    settings.beginGroup("PaneDeck_Widget");
    ParseColor(settings.value("flushColor").toString(), m_flushColor);
    m_strTitleStyle = settings.value("titleStyle").toString();
    m_strWidgetStyle = settings.value("style").toString();
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
    return StringIn(m_strResPath + "/" + strFile, strKey);
}

QString CSkinConfig::BuildButtonStyle(const QString& strSection, bool bHideMenuIndicator,
                                      const QString& strFile) const
{
    const QSettings settings(m_strButtonPath + "/" + strFile, QSettings::IniFormat);
    const auto path = [&](const char* name) {
        return m_strButtonPath + "/" + settings.value(strSection + name).toString();
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
