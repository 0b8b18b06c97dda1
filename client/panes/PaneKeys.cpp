#include "panes/PaneKeys.h"

#include "common/Words.h"
#include "panes/PaneFocus.h"

#include <CPaneDeck.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTimerEvent>

#include <utility>

namespace {

constexpr int ZoomIn = 9;
constexpr int ZoomOut = 10;
constexpr int BriefMs = 300;
/// A display that tells a repetition as a release and a press has been seen to tell them a millisecond apart.
constexpr int ReleaseMs = 15;

/// Commands by the way up (-1 to 1) and the way to the right.
constexpr int Commands[3][3] = {{5, 1, 7}, {3, -1, 4}, {6, 2, 8}};

bool isArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

/// What is done once however long its key is held.
bool isAction(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_S:
    case Qt::Key_R:
    case Qt::Key_A:
    case Qt::Key_Z:
    case Qt::Key_Space:
    case Qt::Key_Delete:
        return true;
    }
    return false;
}

/// The key as it is counted while it is held: which sign a key gives may change while it is down.
int heldKey(int key)
{
    if (key == Qt::Key_Equal)
        return Qt::Key_Plus;
    return key == Qt::Key_Underscore ? Qt::Key_Minus : key;
}

bool isZoom(int key)
{
    return key == Qt::Key_Plus || key == Qt::Key_Minus;
}

int commandOf(const QSet<int>& held)
{
    if (held.contains(Qt::Key_Plus) != held.contains(Qt::Key_Minus))
        return held.contains(Qt::Key_Plus) ? ZoomIn : ZoomOut;
    const int down = int(held.contains(Qt::Key_Down)) - int(held.contains(Qt::Key_Up));
    const int right = int(held.contains(Qt::Key_Right)) - int(held.contains(Qt::Key_Left));
    return Commands[down + 1][right + 1];
}

/// How far a pane lies in a direction, sideways counted twice; negative if it doesn't lie there.
int distance(const QRect& from, const QRect& to, int key)
{
    const QPoint way = to.center() - from.center();
    const bool isLevel = key == Qt::Key_Left || key == Qt::Key_Right;
    const int ahead = isLevel ? way.x() : way.y();
    const int along = key == Qt::Key_Left || key == Qt::Key_Up ? -ahead : ahead;
    const int half = isLevel ? from.width() / 2 : from.height() / 2;
    if (along < half)
        return -1;
    return along + 2 * qAbs(isLevel ? way.y() : way.x());
}

void send(QWidget* widget, QEvent::Type type, Qt::MouseButtons buttons)
{
    const QPointF place = widget->rect().center();
    QMouseEvent event(type, place, widget->mapToGlobal(place.toPoint()), Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

struct Entry
{
    int key;
    QString keyName;
    QString text;
};

/// What goes by one key each, and is in the pane's menu too.
QVector<Entry> entries()
{
    return {
        {Qt::Key_Return, word("Return"), word("Enlarge the pane, and back")},
        {Qt::Key_S, "S", word("Snapshot")},
        {Qt::Key_R, "R", word("Record, and end the recording")},
        {Qt::Key_A, "A", word("Sound on or off")},
        {Qt::Key_Space, word("Space"), word("Instant playback, and live again")},
    };
}

QVector<Entry> turnEntries()
{
    const auto withCtrl = [](int key) {
        return QKeySequence(Qt::CTRL | Qt::Key(key)).toString(QKeySequence::NativeText);
    };
    return {
        {Qt::Key_Up, withCtrl(Qt::Key_Up), word("Up")},
        {Qt::Key_Down, withCtrl(Qt::Key_Down), word("Down")},
        {Qt::Key_Left, withCtrl(Qt::Key_Left), word("Left")},
        {Qt::Key_Right, withCtrl(Qt::Key_Right), word("Right")},
        {Qt::Key_Plus, "+", word("Nearer")},
        {Qt::Key_Minus, "-", word("Farther")},
    };
}

} // namespace

PaneKeys::PaneKeys(CPaneDeck* deck, int paneCount, Scope scope, QObject* parent)
    : QObject(parent), m_deck(deck), m_paneCount(paneCount), m_scope(scope)
{
    deck->setFocusPolicy(Qt::StrongFocus);
    deck->installEventFilter(this);
    connect(deck, &CPaneDeck::sig_Activechangebefor, this, [this] { showFocus(m_isInKey); });
    connect(deck, &CPaneDeck::sig_activeWnd, this, [this] {
        stopTurning();
        showFocus(m_isInKey);
    });
}

PaneKeys::~PaneKeys()
{
    stopTurning();
}

QVector<QPair<QString, QString>> PaneKeys::help()
{
    QVector<QPair<QString, QString>> keys{
        {word("Arrows"), word("Go to the next pane in that direction")},
        {word("Page up, page down"), word("Previous or next page")},
    };
    for (const Entry& entry : entries())
        keys.append({entry.keyName, entry.text});
    return keys + QVector<QPair<QString, QString>>{
                      {"Z", word("Digital zoom on or off")},
                      {word("Delete"), word("Close the camera")},
                      {word("Ctrl and arrows, held"), word("Turn the camera")},
                      {word("+ and -, held"), word("Zoom the camera")},
                      {word("Menu key, Shift+F10"), word("Menu of the pane")},
                  };
}

void PaneKeys::fillMenu(QMenu* menu)
{
    for (const Entry& entry : entries()) {
        if (m_scope == Scope::Whole || entry.key != Qt::Key_Space)
            menu->addAction(entry.text + '\t' + entry.keyName, this,
                            [this, key = entry.key] { act(key, Qt::NoModifier); });
    }
    if (m_scope != Scope::Whole)
        return;
    QMenu* turns = menu->addMenu(word("Turn the camera"));
    for (const Entry& entry : turnEntries())
        turns->addAction(entry.text + '\t' + entry.keyName, this,
                         [this, key = entry.key] { turnBriefly(key); });
}

bool PaneKeys::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (press(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::KeyRelease:
        if (release(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::FocusIn: {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        showFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                  reason == Qt::ShortcutFocusReason);
        break;
    }
    case QEvent::FocusOut:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        stopTurning();
        showFocus(false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool PaneKeys::press(const QKeyEvent& event)
{
    const int key = heldKey(event.key());
    const bool isCtrl = event.modifiers() & Qt::ControlModifier;
    const bool isHeldKey = m_scope == Scope::Whole && ((isArrow(key) && isCtrl) || (isZoom(key) && !isCtrl));
    if (isHeldKey) {
        if (event.isAutoRepeat())
            return true;
        if (m_brief.isActive())
            stopTurning();
        if (!m_letGo.remove(key))
            endLetGo();
        m_held.insert(key);
        turn();
        return true;
    }
    if (event.isAutoRepeat() && isAction(key))
        return m_scope == Scope::Whole || key != Qt::Key_Space;
    const QPointer<PaneKeys> alive(this);
    m_isInKey = true;
    const bool known = act(key, event.modifiers() & ~Qt::KeypadModifier);
    if (!alive)
        return true;
    m_isInKey = false;
    if (known)
        showFocus(true);
    return known;
}

bool PaneKeys::release(const QKeyEvent& event)
{
    const int key = heldKey(event.key());
    if (event.isAutoRepeat())
        return m_held.contains(key);
    if (key == Qt::Key_Control) {
        for (int arrow : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
            letGo(arrow);
        return false;
    }
    return letGo(key);
}

/// Whether a key was let go of, or only repeats itself, may be known but a moment later.
bool PaneKeys::letGo(int key)
{
    if (!m_held.contains(key))
        return false;
    m_letGo.insert(key);
    m_release.start(ReleaseMs, this);
    return true;
}

void PaneKeys::endLetGo()
{
    m_release.stop();
    m_held.subtract(std::exchange(m_letGo, {}));
    turn();
}

bool PaneKeys::act(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Menu || (key == Qt::Key_F10 && modifiers == Qt::ShiftModifier))
        return askForMenu();
    if (modifiers != Qt::NoModifier)
        return false;
    if (isArrow(key))
        return m_scope == Scope::Whole && move(key);
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return enlarge();
    case Qt::Key_S:
        return click(BTN_SNAPSHOT);
    case Qt::Key_R:
        return click(BTN_RECORD);
    case Qt::Key_A:
        return click(BTN_AUDIO);
    case Qt::Key_Z:
        return click(BTN_ZOOM);
    case Qt::Key_Space:
        return m_scope == Scope::Whole && click(BTN_INSTANT_PLAYBACK);
    case Qt::Key_Delete:
        Q_EMIT closeAsked(current());
        return true;
    case Qt::Key_PageUp:
        m_deck->OnPreviePage();
        return true;
    case Qt::Key_PageDown:
        m_deck->OnNextPage();
        return true;
    default:
        return false;
    }
}

/// A click in the title bar, which comes to the pane and stays if the mouse is there.
bool PaneKeys::click(Btn_type_EX button)
{
    if (!m_deck->PaneWidget(current()))
        return false;
    // A receiver may end this, and the deck with it or not.
    const QPointer<CPaneDeck> deck(m_deck);
    deck->showTitle(current());
    deck->slot_wndBtnClick(button);
    if (deck)
        deck->hideTit();
    return true;
}

bool PaneKeys::enlarge()
{
    const QWidget* picture = m_deck->PaneWidget(current());
    if (!picture || !picture->isVisible())
        return false;
    const QPointer<QWidget> place = picture->parentWidget();
    send(place, QEvent::MouseButtonDblClick, Qt::LeftButton);
    if (place)
        send(place, QEvent::MouseButtonRelease, Qt::NoButton);
    return true;
}

bool PaneKeys::askForMenu()
{
    const QWidget* picture = m_deck->PaneWidget(current());
    if (!picture || !picture->isVisible())
        return false;
    Q_EMIT menuAsked(current(), picture->mapToGlobal(picture->rect().center()));
    return true;
}

bool PaneKeys::move(int key)
{
    const QWidget* picture = m_deck->PaneWidget(current());
    const bool isSeen = picture && picture->isVisible();
    int next = isSeen ? neighbour(placeOf(current()), key) : -1;
    for (int pane = 0; pane < m_paneCount && !isSeen && next < 0; ++pane)
        next = m_deck->PaneWidget(pane)->isVisible() ? pane : -1;
    if (next >= 0)
        m_deck->SetActiveWnd(next);
    return true;
}

int PaneKeys::neighbour(const QRect& from, int key) const
{
    int best = -1;
    int least = 0;
    for (int pane = 0; pane < m_paneCount; ++pane) {
        if (!m_deck->PaneWidget(pane)->isVisible())
            continue;
        const int way = distance(from, placeOf(pane), key);
        if (way < 0 || (best >= 0 && way >= least))
            continue;
        best = pane;
        least = way;
    }
    return best;
}

QRect PaneKeys::placeOf(int pane) const
{
    const QWidget* place = m_deck->PaneWidget(pane)->parentWidget();
    return QRect(place->mapTo(m_deck, QPoint()), place->size());
}

void PaneKeys::turn()
{
    const int command = commandOf(m_held);
    if (command == m_command)
        return;
    const int former = std::exchange(m_command, command);
    if (former >= 0)
        Q_EMIT ptz(m_turningPane, former, 1);
    m_turningPane = current();
    if (command >= 0)
        Q_EMIT ptz(m_turningPane, command, 0);
}

/// A menu's entry can't be held.
void PaneKeys::turnBriefly(int key)
{
    stopTurning();
    m_held.insert(key);
    m_brief.start(BriefMs, this);
    turn();
}

void PaneKeys::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_brief.timerId())
        stopTurning();
    else if (event->timerId() == m_release.timerId())
        endLetGo();
}

void PaneKeys::stopTurning()
{
    m_brief.stop();
    m_release.stop();
    m_letGo.clear();
    m_held.clear();
    turn();
}

void PaneKeys::showFocus(bool byKeys)
{
    QWidget* picture = byKeys ? m_deck->PaneWidget(current()) : nullptr;
    if (!m_focus && !picture)
        return;
    if (!m_focus)
        m_focus = new PaneFocus;
    m_focus->showOn(picture);
}

int PaneKeys::current() const
{
    return m_deck->GetCurrentWnd();
}
