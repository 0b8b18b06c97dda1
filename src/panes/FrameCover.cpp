#include "panes/FrameCover.h"

#include "panes/QMyLabel.h"

#include <QEvent>

FrameCover::FrameCover(QMyLabel* pLabel, QWidget* pAbove) : QWidget(pLabel->parentWidget()), m_pLabel(pLabel)
{
    hide();
    stackUnder(pAbove);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setGeometry(pLabel->geometry());
    pLabel->installEventFilter(this);
}

void FrameCover::SetInUse(bool bInUse)
{
    if (bInUse == m_bInUse)
        return;
    m_bInUse = bInUse;
    setVisible(bInUse && m_pLabel->HasFrame());
}

void FrameCover::ChangeFrame(bool bPaint)
{
    if (!m_pLabel->HasFrame())
        hide();
    if (!m_pLabel->HasFrame() || !m_bInUse || !bPaint)
        return;
    show();
    update();
}

bool FrameCover::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Move || pEvent->type() == QEvent::Resize)
        setGeometry(m_pLabel->geometry());
    return QWidget::eventFilter(pWatched, pEvent);
}

bool FrameCover::event(QEvent* pEvent)
{
    const bool bHandled = QWidget::event(pEvent);
    // A style may clear the attribute when it polishes a widget.
    if (pEvent->type() == QEvent::Polish || pEvent->type() == QEvent::StyleChange)
        setAttribute(Qt::WA_OpaquePaintEvent);
    return bHandled;
}

void FrameCover::paintEvent(QPaintEvent*)
{
    QPoint offset;
    QPaintDevice* pDevice = sharedPainter() ? nullptr : redirected(&offset);
    if (!m_pLabel || !m_pLabel->HasFrame())
        return;
    m_pLabel->PaintFrameOn(*this, pDevice, -offset);
    m_pLabel->PaintBorderOn(*this);
}
