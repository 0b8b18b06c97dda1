#include "views/ViewDialog.h"

#include "common/Words.h"
#include "tabs/LiveTab.h"
#include "views/ViewList.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

ViewDialog::ViewDialog(ViewList* views, LiveTab* live)
    : QDialog(live->window()), m_views(views), m_live(live), m_list(new QListWidget), m_error(new QLabel)
{
    setObjectName("ViewDialog");
    setWindowTitle(word("Views"));
    m_list->setObjectName("ViewNames");
    m_list->setAccessibleName(word("Views"));
    m_error->setWordWrap(true);
    auto* across = new QHBoxLayout;
    across->addWidget(m_list, 1);
    auto* down = new QVBoxLayout;
    across->addLayout(down);
    for (QPushButton* button : {addButton(word("Sho&w"), "ViewShow", &ViewDialog::showView),
                                addButton(word("&Rename"), "ViewRename", &ViewDialog::rename),
                                addButton(word("&Overwrite"), "ViewOverwrite", &ViewDialog::overwrite),
                                addButton(word("Re&move"), "ViewRemove", &ViewDialog::remove),
                                addButton(word("&Up"), "ViewUp", &ViewDialog::moveUp),
                                addButton(word("&Down"), "ViewDown", &ViewDialog::moveDown)})
        down->addWidget(button);
    down->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addLayout(across, 1);
    column->addWidget(m_error);
    column->addWidget(close);
    // Not while an item tells of its new name.
    connect(views, &ViewList::changed, this, &ViewDialog::fill, Qt::QueuedConnection);
    connect(m_list, &QListWidget::itemChanged, this, &ViewDialog::takeName);
    fill();
}

QPushButton* ViewDialog::addButton(const QString& text, const char* name, void (ViewDialog::*press)())
{
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, press);
    m_buttons.append(button);
    return button;
}

void ViewDialog::fill()
{
    const QSignalBlocker quiet(m_list);
    const int row = qMax(0, m_list->currentRow());
    m_list->clear();
    for (const DeckView& view : m_views->views()) {
        auto* item = new QListWidgetItem(view.name, m_list);
        item->setData(Qt::UserRole, view.name);
        item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
    m_list->setCurrentRow(qMin(row, m_list->count() - 1));
    for (QPushButton* button : m_buttons)
        button->setEnabled(m_list->count() > 0);
}

QString ViewDialog::current() const
{
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

void ViewDialog::rename()
{
    if (QListWidgetItem* item = m_list->currentItem())
        m_list->editItem(item);
}

void ViewDialog::takeName(QListWidgetItem* item)
{
    const QString before = item->data(Qt::UserRole).toString();
    const QString name = item->text().trimmed();
    QString error;
    const bool isDone = m_views->rename(before, name, &error);
    if (isDone && m_live->viewName() == before)
        m_live->setViewName(name);
    tell(isDone, error);
}

void ViewDialog::overwrite()
{
    Q_EMIT overwriteAsked(current());
}

void ViewDialog::showView()
{
    Q_EMIT showAsked(current());
}

void ViewDialog::remove()
{
    QString error;
    tell(m_views->remove(current(), &error), error);
}

void ViewDialog::moveBy(int by)
{
    QString error;
    const int row = m_list->currentRow();
    tell(m_views->move(current(), by, &error), error);
    m_list->setCurrentRow(qMax(0, qMin(row + by, m_list->count() - 1)));
}

void ViewDialog::moveUp()
{
    moveBy(-1);
}

void ViewDialog::moveDown()
{
    moveBy(1);
}

/// A name that can't be had goes back to what it was, once its editor is closed.
void ViewDialog::tell(bool done, const QString& error)
{
    m_error->setText(done ? QString() : error);
    if (!done)
        QMetaObject::invokeMethod(this, &ViewDialog::fill, Qt::QueuedConnection);
}
