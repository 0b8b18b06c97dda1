#include "FormDeck.h"

#include <QEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace {

constexpr int MostPanes = 64;
constexpr int BuiltInLayouts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, MostPanes};

/// The largest built-in layout of at most `panes` panes, which are at least 1.
int largestLayout(int panes)
{
    return *std::prev(std::upper_bound(std::begin(BuiltInLayouts), std::end(BuiltInLayouts), panes));
}

} // namespace

FormDeck::FormDeck(QWidget* parent) : QWidget(parent)
{
    auto* place = new QVBoxLayout(this);
    place->setContentsMargins(0, 0, 0, 0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

CPaneDeck* FormDeck::deck()
{
    if (!m_deck) {
        m_deck = new CPaneDeck(this, _WND_TYPE(m_kind), m_paneCount);
        layout()->addWidget(m_deck);
        showFirstLayout();
    }
    return m_deck;
}

void FormDeck::setKind(Kind kind)
{
    if (kind < Monitor || kind > Tour || kind == m_kind)
        return;
    m_kind = kind;
    rebuild();
}

void FormDeck::setPaneCount(int count)
{
    const int panes = std::clamp(count, 1, MostPanes);
    if (panes == m_paneCount)
        return;
    m_paneCount = panes;
    rebuild();
}

void FormDeck::setFirstLayout(int panes)
{
    m_firstLayout = std::clamp(panes, 1, MostPanes);
    if (m_deck)
        showFirstLayout();
}

bool FormDeck::event(QEvent* event)
{
    if (event->type() == QEvent::Polish)
        deck();
    return QWidget::event(event);
}

/// The old deck may be the sender of the signal that leads here, so it goes later.
void FormDeck::rebuild()
{
    if (!m_deck)
        return;
    m_deck->hide();
    layout()->removeWidget(m_deck);
    m_deck->deleteLater();
    m_deck = nullptr;
    deck()->show();
}

void FormDeck::showFirstLayout()
{
    m_deck->SetShowWndNo(largestLayout(std::min(m_firstLayout, m_paneCount)));
}
