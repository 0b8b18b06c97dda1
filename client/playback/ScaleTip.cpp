#include "playback/ScaleTip.h"

#include "playback/ScalePlace.h"

#include <QEvent>
#include <QLabel>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int Gap = 2;

} // namespace

ScaleTip::ScaleTip(ScalePlace* place, QWidget* tab)
    : QFrame(tab), m_place(place), m_picture(new QLabel), m_time(new QLabel)
{
    setObjectName("ScaleTip");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    m_time->setForegroundRole(QPalette::ToolTipText);
    m_time->setObjectName("ScaleTime");
    m_time->setAlignment(Qt::AlignCenter);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(5, 2, 5, 2);
    m_picture->setObjectName("ScalePicture");
    m_picture->setFixedSize(PictureSize);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->hide();
    column->addWidget(m_picture);
    column->addWidget(m_time);
    hide();
    connect(place, &ScalePlace::pointedAt, m_picture, &QWidget::hide);
    connect(place, &ScalePlace::pointedAt, this, &ScaleTip::showTime);
    connect(place, &ScalePlace::draggedTo, this, &ScaleTip::showDrag);
    connect(place, &ScalePlace::left, this, &QWidget::hide);
    tab->installEventFilter(this);
}

void ScaleTip::showTime(int second)
{
    m_time->setText(QTime(0, 0).addSecs(second).toString("HH:mm:ss"));
    adjustSize();
    placeAt(second);
    show();
    raise();
}

/// The room for a picture is there at once, so that the tip keeps its size while pictures come.
void ScaleTip::showDrag(int second)
{
    if (m_picture->isHidden())
        m_picture->clear();
    m_picture->show();
    showTime(second);
}

void ScaleTip::showPicture(const QImage& picture)
{
    m_picture->setPixmap(QPixmap::fromImage(picture));
}

void ScaleTip::placeAt(int second)
{
    const QWidget* tab = parentWidget();
    const QPoint top = tab->mapFromGlobal(QPoint(m_place->xOf(second), m_place->top().y()));
    const int x = qBound(0, top.x() - width() / 2, qMax(0, tab->width() - width()));
    move(x, qMax(0, top.y() - height() - Gap));
}

bool ScaleTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide)
        hide();
    return QFrame::eventFilter(watched, event);
}
