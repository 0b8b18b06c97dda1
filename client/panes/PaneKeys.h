#pragma once

#include "PaneDeckTypes.h"

#include <QBasicTimer>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QVector>

class CPaneDeck;
class PaneFocus;
class QKeyEvent;
class QMenu;

/// Works a deck by keys alone, while it has the focus: they go by the active pane, which shows a ring as long
/// as keys are in use. Held keys turn its camera; whatever takes the focus away stops it first.
class PaneKeys : public QObject
{
    Q_OBJECT

public:
    enum class Scope
    {
        Whole,
        ButTransport, ///< leaves arrows and space to whoever plays recordings
    };

    PaneKeys(CPaneDeck* deck, int paneCount, Scope scope, QObject* parent);

    /// Stops what still turns.
    ~PaneKeys() override;

    /// The keys and what they do, in the user's words, for the help.
    static QVector<QPair<QString, QString>> help();

    /// Entries that do the same, each beside its key: those of the title bar and, where the deck has them, a
    /// submenu whose entries turn the camera for a moment.
    void fillMenu(QMenu* menu);

Q_SIGNALS:
    /// As CPaneDeck::sig_SendPtzCommand.
    void ptz(int pane, int command, int type);

    void closeAsked(int pane);

    /// The pane's menu is wanted, at a place of the screen.
    void menuAsked(int pane, QPoint place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    bool press(const QKeyEvent& event);
    bool release(const QKeyEvent& event);
    bool act(int key, Qt::KeyboardModifiers modifiers);
    bool click(Btn_type_EX button);
    bool enlarge();
    bool askForMenu();
    bool move(int key);
    int neighbour(const QRect& from, int key) const;
    QRect placeOf(int pane) const;
    bool letGo(int key);
    void endLetGo();
    void turn();
    void turnBriefly(int key);
    void stopTurning();
    void showFocus(bool byKeys);
    int current() const;

    CPaneDeck* m_deck;
    int m_paneCount;
    Scope m_scope;
    QPointer<PaneFocus> m_focus;
    QSet<int> m_held;
    QSet<int> m_letGo;     ///< of those held, until it is known that they don't only repeat
    QBasicTimer m_release; ///< runs while there are any
    QBasicTimer m_brief;   ///< runs while a menu's entry turns
    int m_command = -1;
    int m_turningPane = -1;
    bool m_isInKey = false;
};
