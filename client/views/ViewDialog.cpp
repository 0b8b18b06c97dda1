#include "views/ViewDialog.h"

#include "common/ClientIcons.h"
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
    m_share = addButton(word("S&hare with all desks"), "ViewShare", &ViewDialog::share);
    m_share->setVisible(views->canShare());
    down->addWidget(m_share);
    down->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addLayout(across, 1);
    column->addWidget(m_error);
    column->addWidget(close);
    // Not while an item tells of its new name.
    connect(views, &ViewList::changed, this, &ViewDialog::fill, Qt::QueuedConnection);
    connect(m_list, &QListWidget::currentRowChanged, this, &ViewDialog::showButtons);
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
        if (!m_views->isShared(view.name))
            continue;
        item->setIcon(ClientIcons::site());
        item->setToolTip(word("Shared by all desks"));
        item->setData(Qt::AccessibleDescriptionRole, item->toolTip());
    }
    m_list->setCurrentRow(qMin(row, m_list->count() - 1));
    showButtons();
}

void ViewDialog::showButtons()
{
    const bool isShared = m_views->isShared(current());
    const bool mayChange = !isShared || m_views->mayShare();
    for (QPushButton* button : qAsConst(m_buttons)) {
        const QString name = button->objectName();
        const bool isOfOrder = name == "ViewUp" || name == "ViewDown";
        const bool changes = !isOfOrder && name != "ViewShow";
        const bool isForbidden = (changes && !mayChange) || (button == m_share && !m_views->mayShare());
        button->setEnabled(m_list->count() > 0 && !isForbidden && !(isShared && isOfOrder));
        button->setToolTip(isForbidden ? word("Your role may not change shared views") : QString());
    }
    m_share->setText(isShared ? word("Keep to t&his desk") : word("S&hare with all desks"));
}

void ViewDialog::share()
{
    QString error;
    tell(m_views->setShared(current(), !m_views->isShared(current()), &error), error);
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
