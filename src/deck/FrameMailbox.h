#pragma once

#include <QImage>
#include <QObject>

#include <map>
#include <mutex>

class CPaneDeck;

/// Brings frames from any thread to a deck's panes. Of each pane's the newest waits and no other one; all
/// that wait are shown together when the GUI thread comes to it.
class FrameMailbox : public QObject
{
    Q_OBJECT

public:
    /// Made in the deck's thread.
    explicit FrameMailbox(CPaneDeck* pDeck) : m_pDeck(pDeck) {}

    /// Any thread. The pane is one of the deck's.
    void Post(int nWndIndex, QImage frame, const QRect& source, const QSize& videoSize);

protected:
    void customEvent(QEvent* pEvent) override;

private:
    struct Letter
    {
        QImage frame;
        QRect source;
        QSize videoSize;
    };

    CPaneDeck* m_pDeck;
    std::mutex m_mutex;
    std::map<int, Letter> m_waiting; ///< by pane

    /// Those being shown. A receiver's own event loop may bring newer ones to it.
    std::map<int, Letter> m_opened;
};
