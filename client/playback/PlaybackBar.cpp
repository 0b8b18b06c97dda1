#include "playback/PlaybackBar.h"

#include "common/Words.h"
#include "playback/DayField.h"
#include "playback/PlaybackIcons.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>

namespace {

QString lengthText(qint64 ms)
{
    const qint64 seconds = ms / 1000;
    const QString minutes = QTime(0, 0).addSecs(int(seconds % 3600)).toString("mm:ss");
    return QString("%1:%2").arg(seconds / 3600).arg(minutes);
}

QString signedSpeed(const QString& speed, bool isBackward)
{
    return isBackward ? QChar(0x2212) + speed : speed;
}

} // namespace

PlaybackBar::PlaybackBar(DayField* field, QWidget* trouble)
    : m_row(new QHBoxLayout(this)), m_time(new QLabel), m_speed(new QLabel), m_turn(addTurnButton())
{
    setObjectName("PlaybackBar");
    m_time->setObjectName("PlaybackTime");
    m_time->setAccessibleName(word("Time shown"));
    m_time->setLayoutDirection(Qt::LeftToRight);
    QFont font = m_time->font();
    font.setBold(true);
    m_time->setFont(font);
    m_speed->setObjectName("PlaybackSpeed");
    m_speed->setAccessibleName(word("Speed"));
    m_speed->setLayoutDirection(Qt::LeftToRight);
    m_speed->setMinimumWidth(m_speed->fontMetrics().horizontalAdvance(signedSpeed("1/8X", true)));
    m_row->setContentsMargins(6, 3, 6, 3);
    auto* label = new QLabel(word("Day"));
    label->setBuddy(field);
    m_row->addWidget(label);
    m_row->addWidget(field);
    m_row->addWidget(m_time);
    m_row->addWidget(m_speed);
    m_row->addWidget(m_turn);
    m_row->addWidget(makeMarkButtons());
    m_row->addWidget(trouble, 1);
    m_row->addWidget(addExportButton());
    showNothing();
}

/// Time runs from left to right in every language.
QWidget* PlaybackBar::makeMarkButtons()
{
    auto* pair = new QWidget;
    pair->setLayoutDirection(Qt::LeftToRight);
    auto* row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(addMarkButton(false));
    row->addWidget(addMarkButton(true));
    return pair;
}

QToolButton* PlaybackBar::makeButton(const QString& name, const QIcon& icon, const QString& text,
                                     const QString& key)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(icon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(text);
    button->setToolTip(QString("%1 (%2)").arg(text, key));
    return button;
}

QToolButton* PlaybackBar::addTurnButton()
{
    QToolButton* button =
        makeButton("PlayBackwards", PlaybackIcons::backwards(), word("Play backwards"), "B");
    button->setCheckable(true);
    connect(button, &QToolButton::clicked, this, &PlaybackBar::turnAsked);
    return button;
}

QToolButton* PlaybackBar::addMarkButton(bool next)
{
    const QString text = next ? word("Next motion or alarm") : word("Previous motion or alarm");
    QToolButton* button =
        makeButton(next ? "NextMark" : "PreviousMark", PlaybackIcons::mark(next), text, next ? "N" : "P");
    connect(button, &QToolButton::clicked, this, [this, next] { Q_EMIT markAsked(next); });
    return button;
}

void PlaybackBar::addPart(const QString& name, const QIcon& icon, const QString& text, QWidget* part)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(icon);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(text);
    button->setToolTip(text);
    const QString key = "playback/" + name;
    button->setChecked(QSettings().value(key, true).toBool());
    part->setVisible(button->isChecked());
    connect(button, &QToolButton::toggled, part, [key, part](bool isOn) {
        QSettings().setValue(key, isOn);
        part->setVisible(isOn);
    });
    m_row->insertWidget(m_row->count() - 1, button);
    m_parts.insert(name, {button, part});
}

void PlaybackBar::allowPart(const QString& name, bool isAllowed)
{
    const Part part = m_parts.value(name);
    if (!part.button || part.button->isEnabled() == isAllowed)
        return;
    part.button->setEnabled(isAllowed);
    part.widget->setVisible(isAllowed && part.button->isChecked());
}

QPushButton* PlaybackBar::addExportButton()
{
    auto* button = new QPushButton(word("Export…"));
    button->setObjectName("PlaybackExport");
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(word("Export recordings") + " (E)");
    connect(button, &QPushButton::clicked, this, &PlaybackBar::exportAsked);
    return button;
}

void PlaybackBar::showMoment(qint64 ms)
{
    showTime(QDateTime::fromMSecsSinceEpoch(ms).toString("yyyy-MM-dd HH:mm:ss"));
}

void PlaybackBar::showFile(qint64 ms, qint64 lengthMs)
{
    showTime(lengthText(ms) + " / " + lengthText(lengthMs));
}

void PlaybackBar::showNothing()
{
    showTime(QString::fromUtf8("–"));
}

void PlaybackBar::showTime(const QString& text)
{
    m_time->setText(text);
    m_time->setMinimumWidth(qMax(m_time->minimumWidth(), m_time->sizeHint().width()));
}

void PlaybackBar::showSpeed(const QString& speed, bool isBackward)
{
    m_speed->setText(signedSpeed(speed, isBackward));
    m_turn->setChecked(isBackward);
}
