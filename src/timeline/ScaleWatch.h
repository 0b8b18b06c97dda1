#pragma once

#include <QObject>
#include <QRect>

class CTimerSlider;
class QMouseEvent;
class QWidget;

/// Tells where a scale lies and what the pointer does on it.
class ScaleWatch : public QObject
{
    Q_OBJECT

public:
    explicit ScaleWatch(CTimerSlider* pScale);

    /// Watches a part of the scale too, or its parent.
    void Follow(QWidget* pPart);

Q_SIGNALS:
    /// The scale has another place or size in its parent, or that has, or it is seen or hidden; told from the
    /// event loop, once for all that came before.
    void sig_ViewChanged();

    /// The pointer is over a second of the scale, with the left button up; -1 once it has left.
    void sig_Pointed(int nSecond);

    /// The thumb is dragged and now at this second; 86399 at the right end.
    void sig_Dragged(int nSecond);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void slot_Tell();
    void slot_Moved(int nSecond);

private:
    void TellLater();
    void TellPointer(const QMouseEvent& event);

    CTimerSlider* m_pScale;
    bool m_bTells = false; ///< sig_ViewChanged is on its way
    QRect m_rcTold;        ///< the scale's place by the last one, null if it wasn't seen
    QRect m_rcParentTold;
};
