#pragma once

#include <QLabel>

class CPaneDeck;

/// Tells in a deck's toolbar which of its pages is shown, "2 / 7", as long as there are several.
class PageLabel : public QLabel
{
    Q_OBJECT

public:
    PageLabel(CPaneDeck* deck, int paneCount);

private:
    void show(int page, int panesOnPage);

    int m_paneCount;
};
