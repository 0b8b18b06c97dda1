#include "deck/FrameMailbox.h"

#include "deck/CPaneDeck.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

void FrameMailbox::Post(int nWndIndex, QImage frame, const QRect& source, const QSize& videoSize)
{
    Letter letter{std::move(frame), source, videoSize};
    const std::lock_guard lock(m_mutex);
    const bool bFirst = m_waiting.empty();
    // The frame that nobody saw goes with `letter`, which outlives the lock: its clean-up may take a while.
    std::swap(m_waiting[nWndIndex], letter);
    if (bFirst)
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void FrameMailbox::customEvent(QEvent*)
{
    std::map<int, Letter> overtaken;
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.merge(m_opened);
        overtaken.swap(m_opened);
        m_opened.swap(m_waiting);
    }
    const QPointer<FrameMailbox> alive(this);
    while (alive && !m_opened.empty()) {
        const auto letter = m_opened.extract(m_opened.begin());
        const Letter& content = letter.mapped();
        m_pDeck->SetFrame(letter.key(), content.frame, content.source, content.videoSize);
    }
}
