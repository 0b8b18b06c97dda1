#include "tabs/AlarmBoard.h"

#include <algorithm>

int AlarmBoard::paneFor(const QString& camera) const
{
    const auto isThis = [&camera](const Pane& pane) { return pane.order > 0 && pane.camera == camera; };
    const auto isEarlier = [](const Pane& one, const Pane& other) { return one.order < other.order; };
    if (m_panes.isEmpty() || std::any_of(m_panes.begin(), m_panes.end(), isThis))
        return -1;
    return int(std::min_element(m_panes.begin(), m_panes.end(), isEarlier) - m_panes.begin());
}

void AlarmBoard::bringUp(int pane, const QString& camera)
{
    if (isPane(pane))
        m_panes[pane] = {camera, ++m_lastOrder};
}

void AlarmBoard::takeDown(int pane)
{
    if (isPane(pane))
        m_panes[pane] = {};
}

bool AlarmBoard::isUp(int pane) const
{
    return isPane(pane) && m_panes[pane].order > 0;
}
