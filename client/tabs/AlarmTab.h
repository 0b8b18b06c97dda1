#pragma once

#include "tabs/AlarmBoard.h"
#include "tabs/DeckTab.h"

#include <QHash>
#include <QSharedPointer>

class ClientArchive;
class VideoSource;

/// Alarms: a camera that sees something move comes up in a pane and stays until it is taken down by hand. In
/// the recordings an alarm lasts until then or until nothing moves any more. A camera dropped on a pane is up
/// as well, without the alarm mark.
class AlarmTab : public DeckTab
{
    Q_OBJECT

public:
    AlarmTab(const CameraList& cameras, CameraHub* hub, EventLog* log, ClientArchive* archive);
    ~AlarmTab() override;

    void ShowCamera(const CameraRecord& camera, int pane) override;

protected:
    /// Begins to watch: nothing is decoded for alarms that nobody has asked to see.
    void FirstShown() override;
    void ButtonClicked(int pane, Btn_type_EX button) override;
    void ClosePane(int pane) override;

private Q_SLOTS:
    void slot_motion(bool motion);

private:
    struct Watched
    {
        const CameraRecord* camera;
        QSharedPointer<VideoSource> source;
    };

    void Watch(const CameraRecord& camera);
    void Raise(const CameraRecord& camera);

    const CameraList& m_cameras;
    CameraHub* m_pHub;
    ClientArchive* m_pArchive;
    AlarmBoard m_board;
    QVector<Watched> m_vecWatched;
};
