#include "timeline/CTimerSlider.h"

#include "common/Accessible.h"
#include "common/QtEvents.h"
#include "common/WheelDelta.h"
#include "layouts/CSplitCatalog.h"
#include "timeline/CShapeWidget.h"
#include "timeline/CTimerLine.h"
#include "timeline/ToPixel.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QVarLengthArray>

namespace {

constexpr int LineTop = 22;
constexpr int LineHeight = 13;
constexpr int ThumbTop = 35;
constexpr int Notch = 120;

// Presses in this band, about the middle of the strip, are kept for double clicks and don't pan.
constexpr int DeadTop = 20;
constexpr int DeadBottom = 30;

} // namespace

CTimerSlider::CTimerSlider(QWidget* parent)
    : QFrame(parent), m_pThumb(new CShapeWidget(this, Qt::WindowFlags()))
{
    setObjectName("CTimerSlider");
    resize(400, 20);
    setWindowTitle(tr("CTimerSlider"));
    connect(m_pThumb, SIGNAL(sig_btnRelease(int,int)), this, SLOT(slot_BtnRelease(int,int)));
    connect(m_pThumb, SIGNAL(sig_btnMove(int,int)), this, SLOT(slot_BtnMoved(int,int)));
    m_pThumb->move(0, 0);
    m_pThumb->setVisible(true);
    if (parent)
        parent->installEventFilter(this);
}

void CTimerSlider::InitRange(int nTotal, int nMode)
{
    m_nMode = nMode;
    delete m_pLine;
    m_pLine = new CTimerLine(this, nMode);
    connect(m_pLine, SIGNAL(sig_mouseDbClick(int)), this, SLOT(slot_MouseDbClice(int)));
    m_pLine->SetCount(nTotal);
    m_nTotal = nTotal;
    m_dRight = width();
    m_pLine->setGeometry(0, 20, width(), 10);
    m_pThumb->move(0 - m_pThumb->width() / 2, 20);
}

void CTimerSlider::SetColors(const unsigned int* pColors)
{
    if (m_pLine)
        m_pLine->SetColors(pColors);
}

bool CTimerSlider::IsThumbPressed() const
{
    return m_pThumb->IsPressed();
}

void CTimerSlider::ValueFromPoint(int x, int y)
{
    m_ptThumb = QPoint(x, y);
    m_nValue = Track().ValueAt(x);
    if (m_nMode == 1 && m_nValue == 3600)
        m_nValue = 3599;
}

void CTimerSlider::slot_BtnMoved(int x, int y)
{
    ValueFromPoint(x, y);
    Q_EMIT sig_SliderMoved(m_nValue);
}

void CTimerSlider::slot_BtnRelease(int x, int)
{
    // A release before any drag reports (0, 0). Its x counts, but the thumb must not leave its line.
    ValueFromPoint(x, m_pThumb->y());
    TellValue(this, m_nValue);
    Q_EMIT sig_SliderReleased(m_nValue);
}

void CTimerSlider::slot_SetCurNum(int nNum)
{
    m_nValue = nNum;
    if (m_nMode != 0 && nNum != 0)
        m_nValue = nNum % 3600 == 0 ? 3599 : nNum % 3600;
    m_ptThumb.setX(Track().EdgeOf(m_nValue));
    m_pThumb->move(m_ptThumb);
    TellValue(this, m_nValue);
}

void CTimerSlider::slot_MouseDbClice(int nNum)
{
    ValueFromPoint(ToPixel(nNum + m_dThumbMinX), m_ptThumb.y());
    m_pThumb->move(m_ptThumb);
    const QPointer<CTimerSlider> alive(this);
    Q_EMIT sig_SliderMoved(m_nValue);
    if (alive)
        Q_EMIT sig_MouseDbCLick(m_nValue);
}

void CTimerSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    if (event->pos().y() < DeadTop || event->pos().y() > DeadBottom)
        m_bPanning = true;
    m_ptPanStart = pos();
    m_ptPanGlobal = GlobalPosOf(*event);
}

void CTimerSlider::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_bPanning)
        return;
    const int x = ToPixel(double(m_ptPanStart.x()) + GlobalPosOf(*event).x() - m_ptPanGlobal.x());
    PanTo(ScaleView{m_dBaseWidth, m_dZoomWidth, pos().x()}.Panned(x, m_dScaleEnd), m_ptPanStart.y());
}

void CTimerSlider::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_bPanning = false;
    QFrame::mouseReleaseEvent(event);
}

void CTimerSlider::wheelEvent(QWheelEvent* event)
{
    const int notches = WheelDelta(*event) / Notch;
    const int cursorX = int(event->position().x());
    const ScaleView view = ScaleView{m_dBaseWidth, m_dZoomWidth, x()}.Zoomed(notches, cursorX);
    if (view.baseWidth > 0)
        Show(view);
}

void CTimerSlider::SetView(int nX, int nWidth)
{
    if (m_dBaseWidth <= 0)
        return;
    const double widest = qMin(m_dBaseWidth * ScaleView::MaxRatio, double(QWIDGETSIZE_MAX));
    ScaleView view{m_dBaseWidth, qBound(m_dBaseWidth, double(nWidth), widest), 0};
    view.x = view.Panned(nX, view.zoomWidth);
    Show(view);
}

void CTimerSlider::Show(const ScaleView& view)
{
    SetZoom(view.baseWidth, view.zoomWidth);
    resize(int(view.zoomWidth), height());
    PanTo(view.x, y());
    m_bRelayout = true;
    update();
}

TimeScale CTimerSlider::Scale() const
{
    return TimeScale(width(), ScaleView{m_dBaseWidth, m_dZoomWidth, x()}.Ratio());
}

void CTimerSlider::paintEvent(QPaintEvent* event)
{
    const TimeScale scale = Scale();
    QPainter painter(this);
    PaintTicks(painter, scale, event->rect());
    m_dScaleEnd = scale.End();
    if (m_pLine && m_bRelayout)
        PlaceParts();
}

void CTimerSlider::PaintTicks(QPainter& painter, const TimeScale& scale, const QRect& exposed) const
{
    painter.setPen(CSplitCatalog::Instance()->styleId == 1 ? QColor(157, 156, 155) : QColor(33, 33, 33));
    // The size is the widget's, be it set by a style sheet; the family is not.
    QFont font(QStringLiteral("微软雅黑"));
    font.setItalic(false);
    font.setWeight(QFont::Normal);
    painter.setFont(font);
    const int last = scale.LastTick(exposed.right());
    QVarLengthArray<QLine, 128> lines;
    for (int i = scale.FirstTick(exposed.left()); i <= last; ++i) {
        const double x = scale.TickX(i);
        lines.append(QLine(int(x), scale.Top(i), int(x), TimeScale::TickBottom));
        if (scale.IsLabelled(i))
            painter.drawText(QRect(int(x - 18), 0, 35, 20), Qt::AlignHCenter | Qt::AlignVCenter,
                             scale.Label(i));
    }
    painter.drawLines(lines.constData(), lines.size());
}

void CTimerSlider::PlaceParts()
{
    m_bRelayout = false;
    m_pLine->setGeometry(0, LineTop, int(m_dScaleEnd), LineHeight);
    m_dThumbWidth = m_pThumb->width();
    const int half = m_pThumb->width() / 2;
    const double minX = -half;
    if (m_dThumbMinX == minX && m_dRight == m_dScaleEnd && m_dThumbY == ThumbTop)
        return;
    m_pThumb->SetMoveRange(0, int(m_dScaleEnd));
    m_ptThumb = QPoint(ThumbPlace(minX), ThumbTop);
    m_dThumbMinX = minX;
    m_dRight = m_dScaleEnd;
    m_dThumbY = ThumbTop;
    m_pThumb->move(m_ptThumb);
}

// Where the thumb belongs on the scale just drawn: at the left end if it has not been placed yet, else in
// proportion.
int CTimerSlider::ThumbPlace(double fMinX) const
{
    const double length = m_dRight - m_dThumbMinX + fMinX;
    if (m_dThumbMinX == 0.0 || length <= 0)
        return int(fMinX);
    return int(ToPixel((m_ptThumb.x() - m_dThumbMinX) * m_dScaleEnd / length) + fMinX);
}

void CTimerSlider::resizeEvent(QResizeEvent* event)
{
    m_bRelayout = true;
    QFrame::resizeEvent(event);
    FollowParent();
}

// A parent that gets as wide as the zoomed scale is gives it no resize of its own, so the parent's is watched
// as well.
bool CTimerSlider::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        FollowParent();
    return QFrame::eventFilter(watched, event);
}

void CTimerSlider::FollowParent()
{
    const QWidget* parent = parentWidget();
    if (!parent)
        return;
    if (parent->width() != m_dBaseWidth) {
        SetZoom(parent->width(), parent->width());
        m_nPan = 0;
        m_bRelayout = true;
    } else if (m_dZoomWidth > m_dBaseWidth && width() == parent->width()) {
        // The parent's layout ran for another reason, such as a new height, and knows nothing of the zoom.
        setGeometry(m_nPan, y(), int(m_dZoomWidth), height());
    }
}

void CTimerSlider::SetZoom(double fBaseWidth, double fZoomWidth)
{
    m_dBaseWidth = fBaseWidth;
    m_dZoomWidth = fZoomWidth;
    // A pan may go on before the next paint, and must not let the scale off the viewport by the old end.
    m_dScaleEnd = TimeScale(fZoomWidth, fZoomWidth / qMax(1.0, fBaseWidth)).End();
}

void CTimerSlider::PanTo(int x, int y)
{
    m_nPan = x;
    move(x, y);
}
