#include "panes/QMyLabel.h"

#include "frames/FramePainter.h"
#include "panes/DragRule.h"
#include "panes/FrameCover.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QPainter>

#include <utility>

namespace {

/// The frame, or a copy in a format that is painted without another one.
QImage Readable(const QImage& frame)
{
    constexpr int WordBytes = 4;
    if (frame.format() == QImage::Format_RGB888)
        return frame;
    if (frame.format() != QImage::Format_RGB32)
        return frame.convertToFormat(QImage::Format_RGB32);
    const bool bAligned =
        quintptr(frame.constBits()) % WordBytes == 0 && frame.bytesPerLine() % WordBytes == 0;
    return bAligned ? frame : frame.convertToFormat(QImage::Format_RGB888);
}

/// A view on the pixels of a part that lies inside.
QImage PartOf(const QImage& frame, const QRect& part)
{
    const uchar* pFirst = frame.constScanLine(part.y()) + part.x() * frame.depth() / 8;
    return QImage(pFirst, part.width(), part.height(), frame.bytesPerLine(), frame.format());
}

} // namespace

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
    const uchar* pPixels = reinterpret_cast<const uchar*>(quintptr(dwBuffer));
    QImage* pImage = pPixels ? new QImage(pPixels, nWidth, nHeight, QImage::Format_RGB888) : nullptr;
    // Updates that are off leave the frame to whoever turned them off, unless they come on to hand it over.
    ShowImage(pImage, !testAttribute(Qt::WA_ForceUpdatesDisabled));
    m_resizeTold = QSize();
    m_held = QImage();
}

void QMyLabel::SetFrame(const QImage& frame, const QRect& source, const QSize& videoSize)
{
    // A receiver may take the caller's image away.
    QImage readable = Readable(frame);
    const bool bOther = !readable.isNull() && !videoSize.isEmpty();
    if (!TellSize(bOther ? videoSize : readable.size()))
        return;
    m_source = source & readable.rect();
    if (m_source.isEmpty())
        m_source = readable.rect();
    ShowImage(readable.isNull() ? nullptr : new QImage(PartOf(readable, m_source)), true);
    // The frame before goes last, now that nothing points at it.
    m_held.swap(readable);
}

/// False if a receiver has deleted the label, or shown or cleared what came after the frame of that size.
bool QMyLabel::TellSize(const QSize& size)
{
    if (std::exchange(m_resizeTold, size) == size || size.isEmpty())
        return true;
    const QPointer<QMyLabel> alive(this);
    const uint nShown = m_nShown;
    Q_EMIT sig_VideoResize(size.width(), size.height());
    return alive && m_nShown == nShown;
}

QPoint QMyLabel::InWholeFrame(const QPoint& pt) const
{
    if (m_held.isNull() || m_source == m_held.rect() || width() <= 0 || height() <= 0)
        return pt;
    const double dX = m_source.x() + double(pt.x()) * m_source.width() / width();
    const double dY = m_source.y() + double(pt.y()) * m_source.height() / height();
    return QPoint(int(dX * width() / m_held.width()), int(dY * height() / m_held.height()));
}

/// Takes the image, if it isn't null, in place of the one before.
void QMyLabel::ShowImage(QImage* pImage, bool bPaint)
{
    ++m_nShown;
    delete m_pImage;
    m_pImage = pImage;
    if (m_pImage && m_pImage->isNull()) {
        delete m_pImage;
        m_pImage = nullptr;
    }
    DeclareOpaque();
    if (m_pCover)
        m_pCover->ChangeFrame(bPaint);
    // What updates() that are off would drop is painted all the same if they come on to ask for it.
    const bool bOff = bPaint && testAttribute(Qt::WA_ForceUpdatesDisabled);
    if (bOff)
        setUpdatesEnabled(true);
    update();
    if (bOff)
        setUpdatesEnabled(false);
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
