#include "toolbars/CPictureIcon.h"

#include "toolbars/CSkinConfig.h"

#include <QSettings>

CPictureIcon::CPictureIcon(QWidget* parent)
    : QToolButton(parent), m_strIconPath(CSkinConfig::Instance()->GetIconPath(QString()))
{
}

void CPictureIcon::SetPicture(const QString& strKey, bool bStyleSheet, const QString& strFile)
{
    const QSettings settings(m_strIconPath + "/" + strFile, QSettings::IniFormat);
    const QString strPath = m_strIconPath + "/" + settings.value("PaneDeck/" + strKey).toString();
    if (bStyleSheet) {
        setStyleSheet("QToolButton{background-image:url(" + strPath + ")}");
        return;
    }
    setIconSize(QPixmap(strPath).size());
    setIcon(QIcon(strPath));
}
