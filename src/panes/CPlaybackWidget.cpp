#include "panes/CPlaybackWidget.h"

namespace {

struct SpeedText
{
    int speed;
    const char* text;
};

constexpr SpeedText SpeedTexts[] = {
    {0, QT_TRANSLATE_NOOP("CPlaybackWidget", "1X")},     {128, QT_TRANSLATE_NOOP("CPlaybackWidget", "1/8X")},
    {256, QT_TRANSLATE_NOOP("CPlaybackWidget", "1/4X")}, {512, QT_TRANSLATE_NOOP("CPlaybackWidget", "1/2X")},
    {1024, QT_TRANSLATE_NOOP("CPlaybackWidget", "1X")},  {2048, QT_TRANSLATE_NOOP("CPlaybackWidget", "2X")},
    {4096, QT_TRANSLATE_NOOP("CPlaybackWidget", "4X")},  {8192, QT_TRANSLATE_NOOP("CPlaybackWidget", "8X")},
};

QString TextOfSpeed(int speed)
{
    for (const SpeedText& entry : SpeedTexts) {
        if (entry.speed == speed)
            return CPlaybackWidget::tr(entry.text);
    }
    return QString();
}

} // namespace

CPlaybackWidget::CPlaybackWidget(QWidget* parent, int nWndIndex) : CVideoWidget(parent, nWndIndex)
{
    m_strSpeed = TextOfSpeed(0);
}

void CPlaybackWidget::SetActive(bool bActive)
{
    CVideoWidget::SetActive(bActive);
}

void CPlaybackWidget::slot_configClicked()
{
    ClickAsActive(BTN_CONFIG);
}

void CPlaybackWidget::slot_resetWnd()
{
    CVideoWidget::slot_resetWnd();
}

void CPlaybackWidget::slot_wndMesInfo(WndMessage_type type, int nParam1, QString strParam2)
{
    if (type == WNDMSG_SPEED)
        m_strSpeed = TextOfSpeed(nParam1);
    else
        CVideoWidget::slot_wndMesInfo(type, nParam1, strParam2);
}

void CPlaybackWidget::resizeEvent(QResizeEvent* event)
{
    CVideoWidget::resizeEvent(event);
}
