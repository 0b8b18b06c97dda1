#include "playback/MarkList.h"

#include "common/Words.h"
#include "playback/MarkModel.h"

#include <QLabel>
#include <QListView>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr int Width = 230;

} // namespace

MarkList::MarkList(const DayRows* rows, const ClientArchive* archive)
    : m_model(new MarkModel(rows, archive, this)), m_view(new QListView), m_title(new QLabel)
{
    setFixedWidth(Width);
    m_view->setObjectName("MarkList");
    m_view->setAccessibleName(word("Motion and alarms of the day"));
    m_view->setModel(m_model);
    m_view->setIconSize(MarkModel::PictureSize);
    m_view->setUniformItemSizes(true);
    m_view->setSpacing(1);
    m_view->setTextElideMode(Qt::ElideRight);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_title->setBuddy(m_view);
    m_title->setContentsMargins(4, 3, 4, 3);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addWidget(m_view, 1);
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this,
            [this] { m_place = m_view->verticalScrollBar()->value(); });
    connect(m_model, &QAbstractItemModel::modelReset, this, &MarkList::showCount);
    connect(m_view, &QListView::clicked, this, [this](const QModelIndex& index) { choose(index.row()); });
    connect(m_view, &QListView::activated, this, [this](const QModelIndex& index) { choose(index.row()); });
    showCount();
}

/// What comes new comes at the end: the list stays where it was.
void MarkList::showCount()
{
    m_title->setText(word("Motion and alarms: %1").arg(m_model->rowCount()));
    m_view->doItemsLayout();
    m_view->verticalScrollBar()->setValue(m_place);
}

void MarkList::choose(int row)
{
    if (row >= 0 && row < m_model->rowCount())
        Q_EMIT chosen(m_model->at(row).pane, m_model->at(row).span.startMs);
}
