#pragma once

#include <QString>
#include <QVector>

/// Which camera, by its id, is up in which pane of the alarm deck, and since when.
class AlarmBoard
{
public:
    explicit AlarmBoard(int paneCount) : m_panes(paneCount) {}

    /// Where an alarm of a camera goes: the first free pane, else the one that has been up longest. -1 if the
    /// camera is up already, or there are no panes.
    int paneFor(const QString& camera) const;

    /// A pane that doesn't exist does nothing, here and below.
    void bringUp(int pane, const QString& camera);
    void takeDown(int pane);
    bool isUp(int pane) const;

private:
    struct Pane
    {
        QString camera;
        quint64 order = 0; ///< grows with each camera brought up; 0 for a free pane
    };

    bool isPane(int pane) const { return pane >= 0 && pane < m_panes.size(); }

    QVector<Pane> m_panes;
    quint64 m_lastOrder = 0;
};
