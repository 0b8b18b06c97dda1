#include "panes/RingChoice.h"

namespace {

constexpr int MostRings = 4;

} // namespace

QVector<int> panesWithRing(const QVector<int>& playing, int active)
{
    if (playing.size() <= MostRings)
        return playing;
    return playing.contains(active) ? QVector<int>{active} : QVector<int>();
}
