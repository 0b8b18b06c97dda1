#include "timeline/CShapeWidget.h"

#include "common/QtEvents.h"
#include "layouts/CSplitCatalog.h"
#include "timeline/ToPixel.h"

#include <QBitmap>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>

CShapeWidget::CShapeWidget(QWidget* parent, Qt::WindowFlags f)
    : QWidget(parent, f), m_heldButton(this, [this] { LetGo(); })
{
    m_strPixmap = tr("%1/%2").arg(CSplitCatalog::Instance()->resourceDir, "playback/PlaybackThumb.png");
    QPixmap pixmap;
    pixmap.load(m_strPixmap, nullptr, Qt::AvoidDither | Qt::ThresholdDither | Qt::ThresholdAlphaDither);
    resize(pixmap.size());
    setMask(pixmap.mask());
}

void CShapeWidget::SetMoveRange(int nLeft, int nRight)
{
    m_nLeft = nLeft;
    m_nRight = nRight;
}

void CShapeWidget::slot_moveThumb(int, int) {}

void CShapeWidget::LetGo()
{
    m_bPressed = false;
    m_heldButton.Release();
}

void CShapeWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        event->ignore();
    if (event->button() != Qt::LeftButton)
        return;
    m_bPressed = true;
    m_heldButton.Press(this);
    m_ptPress = GlobalPosOf(*event);
    m_ptOrigin = frameGeometry().topLeft();
    event->accept();
}

void CShapeWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    m_ptCursor = GlobalPosOf(*event);
    event->accept();
    Drag();
}

void CShapeWidget::Drag()
{
    const int half = frameGeometry().width() / 2;
    const int x = ToPixel(double(m_ptOrigin.x()) + m_ptCursor.x() - m_ptPress.x());
    m_ptLast = QPoint(qMax(m_nLeft - half, qMin(x, m_nRight - half)), m_ptOrigin.y());
    move(m_ptLast);
    Q_EMIT sig_btnMove(m_ptLast.x(), m_ptLast.y());
}

void CShapeWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointer<CShapeWidget> alive(this);
    if (event->button() == Qt::LeftButton) {
        LetGo();
        Q_EMIT sig_btnRelease(m_ptLast.x(), m_ptLast.y());
    }
    if (alive)
        QWidget::mouseReleaseEvent(event);
}

void CShapeWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The icon takes the picture for twice the pixels where the screen has them.
    QIcon(m_strPixmap).paint(&painter, rect());
}
