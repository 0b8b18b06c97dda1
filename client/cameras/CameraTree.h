#pragma once

#include <CDeviceTreeWidget.h>

#include "cameras/FleetDesk.h"

#include <deque>

struct CameraRecord;
class CameraList;

/// The tree of groups, sites and cameras, as the list has them now. Cameras are dragged from it onto panes.
class CameraTree : public CDeviceTreeWidget
{
    Q_OBJECT

public:
    CameraTree(const CameraList& cameras, QWidget* parent);

    /// The camera of a dropped or activated row; null for sites, groups and no row.
    static const CameraRecord* cameraOf(const QTreeWidgetItem* item);

    /// Each has a row, also while it has no camera, where it says if it is away.
    void setSites(const QVector<SiteState>& sites);

Q_SIGNALS:
    /// A camera was double clicked or chosen with Return.
    void cameraChosen(const CameraRecord* camera);

    /// A camera's row was dropped on that of a group, or of a camera in it. The drag isn't over yet.
    void dropped(const QString& cameraId, const QString& group);

protected:
    void dropEvent(QDropEvent* event) override;

private Q_SLOTS:
    void chooseItem(QTreeWidgetItem* item);

private:
    void fill();
    void addSite(const SiteState& site);
    void fillLater();
    void fillAgain();
    /// The row of a camera with its branches, in which names that are empty have no row.
    void addCamera(const CameraRecord& camera);
    /// The row of a site or group, made at its first use.
    QTreeWidgetItem* branch(QTreeWidgetItem* parent, int type, const QString& name);
    QTreeWidgetItem* addRow(QTreeWidgetItem* parent, const CameraRecord& record);

    const CameraList& m_cameras;
    QVector<SiteState> m_sites;
    std::deque<CameraRecord> m_branches; ///< a drag may hold one of before
    bool m_isFillPending = false;
};
