#pragma once

#include <QWidget>

#include <functional>

class DeckTab;

/// Where a tab with a deck lies. The deck, which takes its time, is made when it is needed first.
class TabPage : public QWidget
{
    Q_OBJECT

public:
    using Maker = std::function<DeckTab*()>;

    explicit TabPage(Maker make);

    /// The tab, made now if it was not there yet.
    DeckTab* tab();
    /// The tab; null as long as nobody needed it.
    DeckTab* made() const { return m_tab; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    Maker m_make;
    DeckTab* m_tab = nullptr;
};
