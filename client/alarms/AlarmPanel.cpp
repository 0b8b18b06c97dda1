#include "alarms/AlarmPanel.h"

#include "alarms/AlarmBook.h"
#include "common/Words.h"

#include <QBoxLayout>
#include <QDateTime>
#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QTreeWidget>

namespace {

constexpr int NumberRole = Qt::UserRole;
constexpr int CameraRole = Qt::UserRole + 1;
constexpr int StartRole = Qt::UserRole + 2;
constexpr int BeforeMs = 5000;
constexpr int Height = 120;

QString stateOf(const Alarm& alarm)
{
    const QString seen = alarm.isSeen ? word("seen") : word("new");
    return alarm.endMs == 0 ? word("%1, goes on").arg(seen) : seen;
}

QString timeOf(const Alarm& alarm)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(alarm.startMs);
    // The day comes first whichever way the lines run.
    return QChar(0x2066) + time.toString("yyyy-MM-dd HH:mm:ss") + QChar(0x2069);
}

QTreeWidgetItem* rowOf(const Alarm& alarm)
{
    auto* row = new QTreeWidgetItem({timeOf(alarm), alarm.cameraName, stateOf(alarm)});
    row->setData(0, NumberRole, alarm.number);
    row->setData(0, CameraRole, alarm.cameraId);
    row->setData(0, StartRole, alarm.startMs);
    QFont font = row->font(0);
    font.setBold(!alarm.isSeen);
    for (int column = 0; column < row->columnCount(); ++column)
        row->setFont(column, font);
    return row;
}

} // namespace

AlarmPanel::AlarmPanel(AlarmBook* book, QWidget* parent)
    : QFrame(parent), m_book(book), m_list(new QTreeWidget), m_seen(new QPushButton(word("&Seen"))),
      m_allSeen(new QPushButton(word("A&ll seen"))), m_play(new QPushButton(word("&Play the recording")))
{
    setObjectName("AlarmPanel");
    m_list->setObjectName("AlarmList");
    m_list->setAccessibleName(word("Alarms"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setHeaderLabels({word("Time"), word("Camera"), word("State")});
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_seen->setObjectName("AlarmSeen");
    m_allSeen->setObjectName("AlarmAllSeen");
    m_play->setObjectName("AlarmPlay");
    layOut();
    connect(book, &AlarmBook::changed, this, &AlarmPanel::showAlarms);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &AlarmPanel::showButtons);
    connect(m_list, &QTreeWidget::itemActivated, this, &AlarmPanel::playChosen);
    connect(m_seen, &QPushButton::clicked, this, &AlarmPanel::setChosenSeen);
    connect(m_allSeen, &QPushButton::clicked, book, &AlarmBook::setAllSeen);
    connect(m_play, &QPushButton::clicked, this, &AlarmPanel::playChosen);
    showAlarms();
}

void AlarmPanel::layOut()
{
    setFixedHeight(Height);
    auto* row = new QHBoxLayout(this);
    row->addWidget(m_list, 1);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {m_seen, m_allSeen, m_play})
        buttons->addWidget(button);
    buttons->addStretch(1);
    row->addLayout(buttons);
}

/// The rows anew, with the same ones chosen.
void AlarmPanel::showAlarms()
{
    QSet<quint64> chosen;
    for (const QTreeWidgetItem* row : m_list->selectedItems())
        chosen.insert(row->data(0, NumberRole).toULongLong());
    QList<QTreeWidgetItem*> rows;
    for (const Alarm& alarm : m_book->alarms())
        rows.append(rowOf(alarm));
    m_list->clear();
    m_list->addTopLevelItems(rows);
    for (QTreeWidgetItem* row : rows)
        row->setSelected(chosen.contains(row->data(0, NumberRole).toULongLong()));
    showButtons();
}

void AlarmPanel::showButtons()
{
    const int chosen = m_list->selectedItems().size();
    const bool may = m_book->mayAcknowledge();
    m_seen->setEnabled(chosen > 0 && may);
    m_play->setEnabled(chosen == 1);
    m_allSeen->setEnabled(m_book->unseenCount() > 0 && may);
    for (QPushButton* button : {m_seen, m_allSeen})
        button->setToolTip(may ? QString() : word("Your role may not acknowledge alarms"));
}

void AlarmPanel::setChosenSeen()
{
    QVector<quint64> numbers;
    for (const QTreeWidgetItem* row : m_list->selectedItems())
        numbers.append(row->data(0, NumberRole).toULongLong());
    for (const quint64 number : numbers)
        m_book->setSeen(number);
}

void AlarmPanel::playChosen()
{
    const QList<QTreeWidgetItem*> chosen = m_list->selectedItems();
    if (chosen.size() != 1)
        return;
    const QString camera = chosen.first()->data(0, CameraRole).toString();
    const qint64 from = chosen.first()->data(0, StartRole).toLongLong() - BeforeMs;
    m_book->setSeen(chosen.first()->data(0, NumberRole).toULongLong());
    Q_EMIT playAsked(camera, from);
}
