#pragma once

#include <QString>
#include <QVector>

/// Which camera is up in which pane of the alarm deck, and since when.
class AlarmBoard
{
public:
    explicit AlarmBoard(int paneCount) : m_vecPanes(paneCount) {}

    /// Where an alarm of a camera goes: the first free pane, else the one that has been up longest. -1 if the
    /// camera is up already, or there are no panes.
    int PaneFor(const QString& camera) const;

    /// A pane that doesn't exist does nothing, here and below.
    void BringUp(int pane, const QString& camera);
    void TakeDown(int pane);
    bool IsUp(int pane) const;

private:
    struct Pane
    {
        QString camera;
        quint64 order = 0; ///< grows with each camera brought up; 0 for a free pane
    };

    bool IsPane(int pane) const { return pane >= 0 && pane < m_vecPanes.size(); }

    QVector<Pane> m_vecPanes;
    quint64 m_nOrder = 0;
};
