#include "toolbars/CPictureIcon.h"

#include "common/IniFile.h"
#include "toolbars/CSkinConfig.h"

CPictureIcon::CPictureIcon(QWidget* parent)
    : CToolButton(parent), m_strIconPath(CSkinConfig::Instance()->GetIconPath(QString()))
{
}

void CPictureIcon::SetPicture(const QString& strKey, bool bStyleSheet, const QString& strFile)
{
    const IniFile file(m_strIconPath + "/" + strFile);
    const QString strPath = m_strIconPath + "/" + file.Value("PaneDeck/" + strKey).toString();
    if (bStyleSheet) {
        setStyleSheet("QToolButton{background-image:url(" + strPath + ")}");
        return;
    }
    setIconSize(QPixmap(strPath).size());
    setIcon(QIcon(strPath));
}
