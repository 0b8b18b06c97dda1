#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QWidget;

/// The left button, held on a widget. Its release never comes once the widget is disabled, a modal dialog
/// blocks any window of the application, a popup such as a menu opens, or the widget's window leaves the
/// screen, hidden, minimized or with its desktop. To a widget that hides alone it does come.
class HeldButton : public QObject
{
public:
    /// `onLost` is called when the release of a press never comes, by an event of the owner's own: the one
    /// that takes the release goes through many widgets, none of which may be deleted meanwhile.
    HeldButton(QObject* owner, std::function<void()> onLost);

    /// The button went down on the widget.
    void Press(QWidget* widget);

    /// It came up, or nobody waits for that any longer.
    void Release();

    /// Whether a release may still come; false from the event on that takes it.
    bool IsHeld() const { return m_pWidget && !m_bLost; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsTaken(QObject* watched, QEvent* event) const;
    void Lose();

    QObject* const m_pOwner;
    const std::function<void()> m_onLost;
    QPointer<QWidget> m_pWidget; ///< null while no button is held
    bool m_bLost = false;
};
