#include "playback/ScaleTip.h"

#include "playback/ScalePlace.h"

#include <QEvent>
#include <QLabel>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int Gap = 2;

} // namespace

ScaleTip::ScaleTip(ScalePlace* place, QWidget* tab) : QFrame(tab), m_place(place), m_time(new QLabel)
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
    column->addWidget(m_time);
    hide();
    connect(place, &ScalePlace::pointedAt, this, &ScaleTip::showTime);
    connect(place, &ScalePlace::draggedTo, this, &ScaleTip::showTime);
    connect(place, &ScalePlace::left, this, &QWidget::hide);
    tab->installEventFilter(this);
}

void ScaleTip::showTime(int second, const QPoint& global)
{
    m_time->setText(QTime(0, 0).addSecs(second).toString("HH:mm:ss"));
    adjustSize();
    this->place(global.x());
    show();
    raise();
}

void ScaleTip::place(int globalX)
{
    const QWidget* tab = parentWidget();
    const QPoint top = tab->mapFromGlobal(QPoint(globalX, m_place->window().top()));
    const int x = qBound(0, top.x() - width() / 2, qMax(0, tab->width() - width()));
    move(x, qMax(0, top.y() - height() - Gap));
}

bool ScaleTip::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide)
        hide();
    return QFrame::eventFilter(watched, event);
}
