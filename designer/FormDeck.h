#pragma once

#include <CPaneDeck.h>

#include <QPointer>

/// A deck on a form of Qt Designer. The kind of a CPaneDeck and its number of panes are set for good when it
/// is built, but a form sets its properties afterwards; so this widget holds the place, and builds the deck
/// that the properties ask for when deck() is first called or the form first shows.
/// CPaneDeck::SetInstallation() and SetLanguageFile() come before that.
///
/// All of it belongs to the GUI thread.
class FormDeck : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(Kind kind READ kind WRITE setKind)
    Q_PROPERTY(int paneCount READ paneCount WRITE setPaneCount)
    Q_PROPERTY(int firstLayout READ firstLayout WRITE setFirstLayout)
    Q_PROPERTY(CPaneDeck* deck READ deck DESIGNABLE false STORED false)

public:
    /// The kinds of a deck, `_WND_TYPE` by names that a form can store.
    enum Kind : int
    {
        Monitor = WND_TYPE_MONITOR,
        Alarm = WND_TYPE_ALARM,
        Playback = WND_TYPE_PLAYBACK,
        Tour = WND_TYPE_TOUR
    };
    Q_ENUM(Kind)

    explicit FormDeck(QWidget* parent = nullptr);

    /// The deck, which is built now if there is none yet. Owned by this widget; a change of kind or pane
    /// count takes another one in its place, and the old one goes once the event loop runs. A program that
    /// has no header or library of this class, as it loads forms while it runs, gets it as the property
    /// "deck".
    CPaneDeck* deck();

    /// Monitor at first.
    Kind kind() const { return m_kind; }

    /// Nothing happens if `kind` is none of the four.
    void setKind(Kind kind);

    /// 64 at first, the default of a CPaneDeck.
    int paneCount() const { return m_paneCount; }

    /// Clamped to 1 to 64, the most that a built-in layout shows.
    void setPaneCount(int count);

    /// How many panes the first page is to show; 4 at first.
    int firstLayout() const { return m_firstLayout; }

    /// Clamped to 1 to 64. What shows is the largest built-in layout that has no more panes than that, and no
    /// more than the deck. A deck that stands changes to it, with the signals of CPaneDeck::SetShowWndNo().
    void setFirstLayout(int panes);

protected:
    bool event(QEvent* event) override;

private:
    void rebuild();
    void showFirstLayout();

    Kind m_kind = Monitor;
    int m_paneCount = 64;
    int m_firstLayout = 4;
    QPointer<CPaneDeck> m_deck; // a receiver of its signals may delete it
};
