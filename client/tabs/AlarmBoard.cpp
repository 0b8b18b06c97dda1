#include "tabs/AlarmBoard.h"

#include <algorithm>

int AlarmBoard::PaneFor(const QString& camera) const
{
    const auto isThis = [&camera](const Pane& pane) { return pane.order > 0 && pane.camera == camera; };
    const auto isEarlier = [](const Pane& one, const Pane& other) { return one.order < other.order; };
    if (m_vecPanes.isEmpty() || std::any_of(m_vecPanes.begin(), m_vecPanes.end(), isThis))
        return -1;
    return int(std::min_element(m_vecPanes.begin(), m_vecPanes.end(), isEarlier) - m_vecPanes.begin());
}

void AlarmBoard::BringUp(int pane, const QString& camera)
{
    if (IsPane(pane))
        m_vecPanes[pane] = {camera, ++m_nOrder};
}

void AlarmBoard::TakeDown(int pane)
{
    if (IsPane(pane))
        m_vecPanes[pane] = {};
}

bool AlarmBoard::IsUp(int pane) const
{
    return IsPane(pane) && m_vecPanes[pane].order > 0;
}
