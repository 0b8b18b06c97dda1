#include "toolbars/CVideoPicButton.h"

#include "common/IniFile.h"
#include "common/Installation.h"
#include "frames/FramePainter.h"

#include <QFileInfo>
#include <QImageReader>

namespace {

constexpr int StateNormal = 0;
constexpr int StateHover = 1;
constexpr int StateClick = 2;
constexpr int StateDisabled = 3;
constexpr int StateCount = 4;

QStringList ValuesOf(const IniFile& file, const QString& strSection, const QStringList& lstKeys,
                     const QString& strPrefix)
{
    QStringList lstValues;
    for (const QString& strKey : lstKeys)
        lstValues.append(strPrefix + file.Value(strSection + strKey).toString());
    return lstValues;
}

// The file's picture from the source with most detail: its double, or its shapes drawn at that size.
QPixmap FinePicture(const QString& strPath, const QSize& pixels)
{
    const QFileInfo file(strPath);
    const QString strDouble = file.path() + "/" + file.completeBaseName() + "@2x." + file.suffix();
    const QPixmap picture(QFile::exists(strDouble) ? strDouble : strPath);
    if (QImageReader(strPath).format() != "svg" || pixels.isEmpty())
        return picture;
    QImageReader reader(strPath);
    reader.setScaledSize(pixels);
    return QPixmap::fromImageReader(&reader);
}

} // namespace

CVideoPicButton::CVideoPicButton(QWidget* parent) : CToolButton(parent)
{
    m_strDir = ButtonDirectory();
}

void CVideoPicButton::LoadPictures(const QString& strSection, bool bStyleSheet, const QString& strFile)
{
    const IniFile file(m_strDir + "/" + strFile);
    QStringList lstKeys = {"/Normal", "/Hover", "/Click", "/Disable"};
    if (isCheckable())
        lstKeys += QStringList{"/CheckNormal", "/CheckHover", "/CheckClick", "/CheckDisable"};
    SetImages(ValuesOf(file, strSection, lstKeys, m_strDir + "/"));
    const QStringList lstColors =
        ValuesOf(file, strSection, {"/FontNormal", "/FontHover", "/FontClick", "/FontDisable"}, QString());
    if (!lstColors.first().isEmpty())
        SetFontColors(lstColors);
    m_bStyleSheetMode = bStyleSheet;
}

void CVideoPicButton::SetImages(const QStringList& lstImages)
{
    m_lstImages = lstImages;
    m_bCheckable = isCheckable();
    if (m_bCheckable)
        connect(this, SIGNAL(toggled(bool)), this, SLOT(on_clicked(bool)), Qt::UniqueConnection);
    ShowChecked(StateNormal);
}

void CVideoPicButton::SetFontColors(const QStringList& lstFontColors)
{
    m_lstFontColors = lstFontColors;
    m_bHasFontColor = true;
}

void CVideoPicButton::SetBtnEnabled(bool bEnable)
{
    ShowChecked(bEnable ? StateNormal : StateDisabled);
    setEnabled(bEnable);
}

void CVideoPicButton::ShowState(int nState)
{
    const bool bHasPicture = nState >= 0 && nState < qMin(m_lstImages.size(), 2 * StateCount);
    if (m_lstImages.size() < StateCount || !bHasPicture)
        return;
    const QString strPath = m_lstImages.at(nState);
    const QString strColor = " color:" + m_lstFontColors.value(nState % StateCount);
    if (m_bStyleSheetMode) {
        const QString strFont = m_bHasFontColor ? strColor + ";" : QString();
        setStyleSheet("QToolButton{" + strFont + "background-image:url(" + strPath + ")}");
        return;
    }
    if (m_bHasFontColor)
        setStyleSheet("QToolButton{" + strColor + "}");
    ShowByPalette(strPath);
}

void CVideoPicButton::ShowByPalette(const QString& strPath)
{
    const qreal dRatio = devicePixelRatioF();
    const QSize pixels = DevicePixels(QRect(QPoint(), size()), dRatio).size();
    const QPixmap picture = dRatio == 1.0 ? QPixmap(strPath) : FinePicture(strPath, pixels);
    if (picture.isNull())
        return;
    QPixmap background = picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    background.setDevicePixelRatio(dRatio);
    QPalette colors = palette();
    colors.setBrush(backgroundRole(), background);
    setPalette(colors);
    setAutoFillBackground(true);
}

void CVideoPicButton::ShowChecked(int nState)
{
    ShowState(m_bCheckable && isChecked() ? nState + StateCount : nState);
}

void CVideoPicButton::ShowCheckedIfEnabled(int nState)
{
    if (isEnabled())
        ShowChecked(nState);
}

void CVideoPicButton::on_clicked(bool bcheck)
{
    ShowState(bcheck ? StateClick + StateCount : StateClick);
}

void CVideoPicButton::mousePressEvent(QMouseEvent* pEvent)
{
    m_bPressed = true;
    ShowChecked(StateClick);
    QToolButton::mousePressEvent(pEvent);
}

void CVideoPicButton::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_bPressed = false;
    ShowCheckedIfEnabled(m_bHover ? StateHover : StateNormal);
    CToolButton::mouseReleaseEvent(pEvent);
}

void CVideoPicButton::enterEvent(EnterEvent* pEvent)
{
    m_bHover = true;
    ShowCheckedIfEnabled(StateHover);
    QToolButton::enterEvent(pEvent);
}

void CVideoPicButton::leaveEvent(QEvent* pEvent)
{
    m_bHover = false;
    ShowCheckedIfEnabled(m_bPressed ? StateClick : StateNormal);
    QToolButton::leaveEvent(pEvent);
}

void CVideoPicButton::resizeEvent(QResizeEvent* pEvent)
{
    if (!isEnabled())
        ShowChecked(StateDisabled);
    else if (m_bPressed)
        ShowChecked(StateClick);
    else
        ShowChecked(m_bHover ? StateHover : StateNormal);
    QWidget::resizeEvent(pEvent);
}
