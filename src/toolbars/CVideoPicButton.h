#pragma once

#include "common/CToolButton.h"
#include "common/QtEvents.h"

#include <QStringList>

/// A tool button with a picture for each visual state: 0 normal, 1 hover, 2 click, 3 disabled, and 4 to 7 the
/// same while checked. Without pictures it is a plain tool button.
class CVideoPicButton : public CToolButton
{
    Q_OBJECT

public:
    explicit CVideoPicButton(QWidget* parent = nullptr);

    /// Takes pictures and text colours from a section of an INI file in the button directory. Comes after
    /// setCheckable(), which decides whether four or eight pictures are read. With bStyleSheet the states
    /// show by a style sheet from the next change on, else by the palette.
    void LoadPictures(const QString& strSection, bool bStyleSheet, const QString& strFile);

    /// Full paths, in the order of the states; fewer than four are never shown.
    void SetImages(const QStringList& lstImages);

    /// Style sheet colours of the states 0 to 3, which hold for 4 to 7 as well.
    void SetFontColors(const QStringList& lstFontColors);

    /// Shows the rest picture of the new condition and enables or disables the button.
    void SetBtnEnabled(bool bEnable);

    /// A state without a picture changes nothing.
    void ShowState(int nState);

public Q_SLOTS:
    /// Shows the click picture for the new checked value; a checkable button's own toggled() comes here.
    void on_clicked(bool bcheck);

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void enterEvent(EnterEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void ShowChecked(int nState);
    void ShowCheckedIfEnabled(int nState);
    void ShowByPalette(const QString& strPath);

    QStringList m_lstImages;
    QStringList m_lstFontColors;
    QString m_strDir;
    bool m_bHover = false;
    bool m_bPressed = false;
    bool m_bCheckable = false;
    bool m_bHasFontColor = false;
    bool m_bStyleSheetMode = false;
};
