#pragma once

/// How long to wait before a lost source is tried again: 1, 2, 4, 8, 16 and from then on 30 seconds.
class RetryPause
{
public:
    /// The pause to make now, in milliseconds.
    int next()
    {
        const int pause = m_nextMs;
        m_nextMs = pause >= LongestMs / 2 ? LongestMs : pause * 2;
        return pause;
    }
    /// The source played: the next loss starts over.
    void reset() { m_nextMs = FirstMs; }

private:
    static constexpr int FirstMs = 1000;
    static constexpr int LongestMs = 30000;
    int m_nextMs = FirstMs;
};
