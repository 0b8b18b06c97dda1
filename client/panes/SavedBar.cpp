#include "panes/SavedBar.h"

#include "common/Words.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimerEvent>
#include <QUrl>

namespace {

constexpr int ShownMs = 8000;
constexpr int Margin = 8;

} // namespace

SavedBar::SavedBar(QWidget* deck, int margin)
    : QFrame(deck), m_margin(margin), m_text(new QLabel), m_open(new QPushButton(word("Open &folder")))
{
    setObjectName("SavedBar");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    // The deck has a colour for frames of its own.
    setStyleSheet("QFrame { background-color: palette(window); color: palette(window-text); }");
    m_text->setTextFormat(Qt::PlainText);
    m_open->setObjectName("SavedOpen");
    auto* close = new QPushButton(word("Close"));
    close->setObjectName("SavedClose");
    // Where a bar of the deck goes that had the keys, the next one to have them must not be one that goes
    // too. The key of the button's text opens the folder all the same.
    m_open->setFocusPolicy(Qt::NoFocus);
    close->setFocusPolicy(Qt::NoFocus);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Margin, Margin / 2, Margin / 2, Margin / 2);
    row->addWidget(m_text, 1);
    row->addWidget(m_open);
    row->addWidget(close);
    connect(m_open, &QPushButton::clicked, this, &SavedBar::openFolder);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);
    deck->installEventFilter(this);
    hide();
}

void SavedBar::tell(const QString& path)
{
    m_path = path;
    m_timer.start(ShownMs, this);
    place();
    raise();
    show();
}

void SavedBar::place()
{
    const QString name = QFileInfo(m_path).fileName();
    const int room = parentWidget()->width() - 2 * Margin;
    m_text->setText(word("Saved: %1").arg(name));
    if (sizeHint().width() > room)
        m_text->setText(
            fontMetrics().elidedText(m_text->text(), Qt::ElideMiddle,
                                     qMax(0, room - sizeHint().width() + m_text->sizeHint().width())));
    setToolTip(m_path);
    const QSize size = sizeHint().boundedTo({room, sizeHint().height()});
    setGeometry((parentWidget()->width() - size.width()) / 2,
                parentWidget()->height() - m_margin - Margin - size.height(), size.width(), size.height());
}

void SavedBar::openFolder()
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(m_path).path()));
    hide();
}

bool SavedBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && isVisible())
        place();
    return QFrame::eventFilter(watched, event);
}

void SavedBar::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId() || underMouse())
        return;
    m_timer.stop();
    hide();
}
