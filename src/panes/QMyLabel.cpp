#include "panes/QMyLabel.h"

#include "frames/FramePainter.h"
#include "panes/DragRule.h"
#include "panes/FrameCover.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QPainter>

QImage* QMyLabel::s_pBackground = nullptr;
bool QMyLabel::s_bBackgroundLoaded = false;

QMyLabel::QMyLabel(QWidget* parent) : QLabel(parent)
{
    setAcceptDrops(true);
}

QMyLabel::~QMyLabel()
{
    delete m_pImage;
}

void QMyLabel::SetText(const QString& strText)
{
    if (strText == m_strText)
        return;
    m_strText = strText;
    update();
}

void QMyLabel::SetKind(int nKind)
{
    m_nKind = nKind;
}

void QMyLabel::SetBackground(const QString& strPath)
{
    s_bBackgroundLoaded = true;
    if (!QFile::exists(strPath))
        return;
    delete s_pBackground;
    s_pBackground = new QImage(strPath);
}

void QMyLabel::slot_BufferChange(ulong dwBuffer, int nWidth, int nHeight)
{
    delete m_pImage;
    m_pImage = nullptr;
    if (dwBuffer != 0) {
        const uchar* pPixels = reinterpret_cast<const uchar*>(dwBuffer);
        m_pImage = new QImage(pPixels, nWidth, nHeight, QImage::Format_RGB888);
    }
    if (m_pImage && m_pImage->isNull()) {
        delete m_pImage;
        m_pImage = nullptr;
    }
    DeclareOpaque();
    // Updates that are off leave the frame to whoever turned them off, unless they come on to hand it over.
    if (m_pCover)
        m_pCover->ChangeFrame(!testAttribute(Qt::WA_ForceUpdatesDisabled));
    update();
}

void QMyLabel::SetCover(FrameCover* pCover)
{
    m_pCover = pCover;
}

/// A frame covers every pixel that Qt asks the label for, so Qt needn't paint what lies under it.
void QMyLabel::DeclareOpaque()
{
    setAttribute(Qt::WA_OpaquePaintEvent, m_pImage);
}

bool QMyLabel::event(QEvent* pEvent)
{
    const bool bHandled = QLabel::event(pEvent);
    // A style may clear the attribute when it polishes a widget.
    if (pEvent->type() == QEvent::Polish || pEvent->type() == QEvent::StyleChange)
        DeclareOpaque();
    return bHandled;
}

void QMyLabel::paintEvent(QPaintEvent* pEvent)
{
    if (m_pImage) {
        QPoint offset;
        // Only a painter of the label's own is known to start without a clip, a turn or a transparency.
        QPaintDevice* pDevice = sharedPainter() ? nullptr : redirected(&offset);
        PaintFrameOn(*this, pDevice, -offset);
    } else {
        QPainter painter(this);
        PaintText(painter);
        PaintBackground(painter);
    }
    QLabel::paintEvent(pEvent);
}

void QMyLabel::PaintFrameOn(QWidget& widget, QPaintDevice* pDevice, const QPoint& origin) const
{
    if (pDevice && PaintFrame(*pDevice, origin, *m_pImage, size()))
        return;
    QPainter painter(&widget);
    PaintText(painter);
    PaintScaled(painter, *m_pImage, size());
}

void QMyLabel::PaintBorderOn(QWidget& widget)
{
    QPainter painter(&widget);
    drawFrame(&painter);
}

void QMyLabel::PaintBackground(QPainter& painter) const
{
    if (m_strText.isEmpty() && s_pBackground && !s_pBackground->isNull())
        PaintScaled(painter, *s_pBackground, size());
}

void QMyLabel::PaintText(QPainter& painter) const
{
    const int nPixelSize = height() / 8;
    if (m_strText.isEmpty() || nPixelSize == 0)
        return;
    QPen pen = painter.pen();
    pen.setColor(m_nKind == 1 ? Qt::white : Qt::red);
    painter.setPen(pen);
    QFont font = painter.font();
    font.setPixelSize(nPixelSize);
    painter.setFont(font);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_strText);
}

void QMyLabel::JudgeDrag(QDropEvent* pEvent) const
{
    if (!AcceptedItem(*pEvent, m_nKind)) {
        pEvent->ignore();
        return;
    }
    pEvent->setDropAction(Qt::MoveAction);
    pEvent->accept();
}

void QMyLabel::dragEnterEvent(QDragEnterEvent* pEvent)
{
    JudgeDrag(pEvent);
}

void QMyLabel::dragMoveEvent(QDragMoveEvent* pEvent)
{
    JudgeDrag(pEvent);
}

void QMyLabel::dropEvent(QDropEvent* pEvent)
{
    if (QTreeWidgetItem* pItem = AcceptedItem(*pEvent, m_nKind))
        Q_EMIT sig_DragEvent(pItem);
}
