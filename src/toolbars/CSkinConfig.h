#pragma once

#include <QColor>
#include <QString>

/// The one process-wide object that knows the directories of the pictures beside the application and holds
/// the skin's values. A directory that does not exist has an empty path.
class CSkinConfig
{
public:
    static CSkinConfig* Instance();

    /// Deletes the object; the next Instance() builds a new one with the values of construction.
    static void Release();

    /// The picture that "/IconSetting.Conf" names for an icon, empty if it names none;
    /// the icon directory for an empty key.
    QString GetIconPath(const QString& strKey) const;

    QString GetResPath() const { return m_strResPath; }

    /// Reads the bar's values from "/OEMStyle.conf". A key that is missing there becomes 0 or empty.
    void LoadBarStyle();

    /// Reads the colour and the styles of the panes from the same file. A missing style becomes empty; the
    /// colour stays as it is if the file does not give a good one.
    void LoadWidgetStyle();

    /// Sets red, green and blue from a text such as "10:20:30", each held to 0 to 255. Any other text changes
    /// nothing.
    static void ParseColor(const QString& strColor, QColor& color);

    /// A string of an INI file in the resource directory; the key is the group, "/" and the name.
    QString GetConfValue(const QString& strKey, const QString& strFile) const;

    /// The style sheet of a tool button with the four pictures that a section of an INI file in the button
    /// directory names.
    QString BuildButtonStyle(const QString& strSection, bool bHideMenuIndicator,
                             const QString& strFile) const;

    QString m_strIconPath;
    QString m_strResPath;
    QString m_strButtonPath;
    QString m_strBarStyle;
    QString m_strTitleStyle;
    QString m_strWidgetStyle;
    QString m_strRootPath;
    QColor m_flushColor; ///< background of a frame label without a picture
    int m_nBarPlace = 0;
    int m_nBarHeight = 28;
    int m_nContentSpace = 0;
    int m_nStopBtnHeight = 25;
    int m_nStopBtnMaxWidth = 75;
    int m_nStopBtnMinWidth = 75;
    int m_nOneScreenBtnHeight = 25;
    int m_nOneScreenBtnWidth = 41;

private:
    CSkinConfig();
};
