#pragma once

#include "common/CToolButton.h"

/// A tool button that takes its picture from the skin's icon directory.
class CPictureIcon : public CToolButton
{
    Q_OBJECT

public:
    explicit CPictureIcon(QWidget* parent = nullptr);

    /// Shows the picture that the key names in section "PaneDeck" of an INI file in the icon directory: by a
    /// style sheet, or as an icon of the picture's size.
    void SetPicture(const QString& strKey, bool bStyleSheet, const QString& strFile);

private:
    QString m_strIconPath;
};
