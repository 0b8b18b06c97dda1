#include "tabs/PageLabel.h"

#include "common/Words.h"

#include <CPaneDeck.h>

namespace {

/// Between the buttons for the page before and the next one.
constexpr int PlaceInRow = 10;

} // namespace

PageLabel::PageLabel(CPaneDeck* deck, int paneCount) : m_paneCount(paneCount)
{
    setObjectName("PageLabel");
    setAlignment(Qt::AlignCenter);
    setToolTip(word("Page"));
    hide();
    connect(deck, &CPaneDeck::sig_wndNumberChanged, this, [this](int panes) { show(0, panes); });
    connect(deck, &CPaneDeck::sig_SwitchVideo, this, &PageLabel::show);
    deck->insertWidget(PlaceInRow, this);
}

void PageLabel::show(int page, int panesOnPage)
{
    const int pages = panesOnPage > 0 ? m_paneCount / panesOnPage : 0;
    setText(QString("%1 / %2").arg(page + 1).arg(pages));
    setVisible(pages > 1);
}
