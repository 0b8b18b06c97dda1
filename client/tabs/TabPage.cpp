#include "tabs/TabPage.h"

#include "tabs/DeckTab.h"

#include <QVBoxLayout>

TabPage::TabPage(Maker make) : m_make(std::move(make))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

DeckTab* TabPage::tab()
{
    if (!m_tab) {
        m_tab = m_make();
        layout()->addWidget(m_tab);
    }
    return m_tab;
}

void TabPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    tab();
}
