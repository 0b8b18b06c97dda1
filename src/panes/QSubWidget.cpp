#include "panes/QSubWidget.h"

#include "frames/FramePainter.h"
#include "layouts/CSplitCatalog.h"
#include "panes/AlarmMark.h"
#include "panes/FrameCover.h"
#include "panes/LabelPlace.h"
#include "panes/PtzZone.h"
#include "panes/QMyLabel.h"
#include "toolbars/CSkinConfig.h"

#include <QPainter>
#include <QResizeEvent>

namespace {

constexpr int CenterDivisor = 5;

enum FunctionMode
{
    FunctionUnset = -1,
    FunctionNone = 0,
    FunctionPtz = 1,
    FunctionRectangle = 2
};

} // namespace

QSubWidget::QSubWidget(QWidget* pParent, int nWndIndex)
    : QFrame(pParent), m_nWndIndex(nWndIndex), m_heldButton(this, [this] { EndHeldGesture(); })
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    CreateLabel();
    CreateAlarmMark();
    connect(m_pLabel, SIGNAL(sig_DragEvent(QTreeWidgetItem*)), this, SLOT(slot_DragEvent(QTreeWidgetItem*)));
    connect(m_pLabel, SIGNAL(sig_VideoResize(int,int)), this, SLOT(slot_VideoResize(int,int)));
    const char* szDragEvent = SIGNAL(sig_DragEvent(QTreeWidgetItem*,int));
    connect(this, szDragEvent, pParent, szDragEvent);
    connect(this, SIGNAL(DoubleClickVideoWidget(int,int)), pParent, SLOT(slot_dbVideoWidget(int,int)));
}

QSubWidget::~QSubWidget()
{
    // After a right press Qt sends the widget under the mouse a context menu event without looking whether it
    // still lives. So a label that is in an event outlives its surface until that event is over.
    if (m_nLabelEvents > 0)
        m_pLabel->setParent(nullptr);
}

void QSubWidget::CreateLabel()
{
    m_pLabel = new QMyLabel(this);
    m_pLabel->setAlignment(Qt::AlignCenter);
    if (!QMyLabel::s_bBackgroundLoaded)
        QMyLabel::SetBackground(CSplitCatalog::Instance()->resourceDir + "/LiveView/wndBackGround.png");
    QPalette palette;
    palette.setBrush(m_pLabel->backgroundRole(), QBrush(CSkinConfig::Instance()->m_flushColor));
    m_pLabel->setPalette(palette);
    m_pLabel->setAutoFillBackground(true);
    m_pLabel->installEventFilter(this);
}

void QSubWidget::CreateAlarmMark()
{
    m_pAlarmLabel = new QLabel(QString(), this);
    m_pAlarmLabel->raise();
    SetAlarmPicture(*m_pAlarmLabel);
    m_pAlarmLabel->hide();
    m_pAlarmLabel->setScaledContents(true);
    m_pAlarmLabel->setGeometry(PlaceOfAlarmMark(width()));
}

void QSubWidget::SetFunctionMode(int nMode)
{
    if (nMode < FunctionUnset || nMode > FunctionRectangle)
        return;
    m_bPtzMode = nMode == FunctionPtz;
    m_bRectMode = nMode == FunctionRectangle;
}

void QSubWidget::SetCursorZone(int nZone)
{
    m_nZone = nZone;
    SetZoneCursor(*m_pLabel, nZone);
}

bool QSubWidget::IsRefreshEnabled() const
{
    return m_pLabel->updatesEnabled();
}

void QSubWidget::SetRefreshEnabled(bool bEnable)
{
    m_pLabel->setUpdatesEnabled(bEnable);
    if (!m_pCover && !bEnable) {
        m_pCover = new FrameCover(m_pLabel, m_pAlarmLabel);
        m_pLabel->SetCover(m_pCover);
    }
    if (m_pCover)
        m_pCover->SetInUse(!bEnable);
}

void QSubWidget::SetText(const QString& strText)
{
    m_pLabel->SetText(strText);
}

void QSubWidget::ResetSurface()
{
    SetFunctionMode(FunctionNone);
    m_pLabel->SetText(QString());
    m_pLabel->update();
}

void QSubWidget::SetScale(WndScase eScale)
{
    if (eScale == m_eScale)
        return;
    m_eScale = eScale;
    SetAspect(RatioOfScale(eScale, QSize(m_nVideoW, m_nVideoH), QSize(m_nAspectW, m_nAspectH)));
}

void QSubWidget::GetVideoSize(int& nWidth, int& nHeight) const
{
    nWidth = m_nVideoW;
    nHeight = m_nVideoH;
}

void QSubWidget::ShowAlarmMark(bool bShow)
{
    m_pAlarmLabel->setVisible(bShow);
}

bool QSubWidget::IsAlarmMarked() const
{
    return !m_pAlarmLabel->isHidden();
}

void QSubWidget::SetLabelKindTour()
{
    m_pLabel->SetKind(1);
}

void QSubWidget::slot_BufferChange(ulong dwBuffer, int nWidth, int nHeight)
{
    if (dwBuffer == 0)
        return;
    const uchar* pPixels = reinterpret_cast<const uchar*>(quintptr(dwBuffer));
    m_pImage = std::make_unique<QImage>(pPixels, nWidth, nHeight, QImage::Format_RGB888);
    if (m_pImage->isNull())
        m_pImage.reset();
}

void QSubWidget::slot_DragEvent(QTreeWidgetItem* pItem)
{
    Q_EMIT sig_DragEvent(pItem, m_nWndIndex);
}

void QSubWidget::slot_VideoResize(int nWidth, int nHeight)
{
    m_nVideoW = nWidth;
    m_nVideoH = nHeight;
    if (m_eScale == WND_SCASE_VIDEO)
        SetAspect(QSize(nWidth, nHeight));
}

void QSubWidget::SetAspect(const QSize& ratio)
{
    m_nAspectW = ratio.width();
    m_nAspectH = ratio.height();
    PlaceLabel();
}

void QSubWidget::PlaceLabel()
{
    const QRect place = PlaceOfLabel(size(), QSize(m_nAspectW, m_nAspectH));
    m_pLabel->setFixedWidth(place.width());
    m_pLabel->setFixedHeight(place.height());
    m_pLabel->move(place.topLeft());
}

void QSubWidget::SetHalfSizes(const QSize& size)
{
    m_nHalfW = size.width() / 2;
    m_nHalfH = size.height() / 2;
    m_nCenterW = m_nHalfW / CenterDivisor;
    m_nCenterH = m_nHalfH / CenterDivisor;
}

void QSubWidget::paintEvent(QPaintEvent* pEvent)
{
    QFrame::paintEvent(pEvent);
    QPainter painter(this);
    if (m_pImage) {
        const QRect place = m_pLabel->geometry();
        painter.translate(place.topLeft());
        PaintScaled(painter, *m_pImage, place.size());
        painter.translate(-place.topLeft());
    }
    if (m_bSelected)
        PaintSelection(painter);
}

void QSubWidget::PaintSelection(QPainter& painter) const
{
    const QColor color(CSplitCatalog::Instance()->styleId == 1 ? "#eeeeee" : "#0000ff");
    // Filled, as a line of one pixel slips below the label where a pixel of the widget isn't one of the
    // screen.
    painter.fillRect(0, 0, 1, height(), color);
    painter.fillRect(0, 0, width(), 1, color);
    painter.fillRect(width() - 1, 0, 1, height(), color);
    painter.fillRect(0, height() - 1, width(), 1, color);
}

void QSubWidget::resizeEvent(QResizeEvent* pEvent)
{
    SetHalfSizes(pEvent->size());
    PlaceLabel();
    m_pAlarmLabel->setGeometry(PlaceOfAlarmMark(width()));
    QFrame::resizeEvent(pEvent);
}
