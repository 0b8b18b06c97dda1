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

    void showCamera(const CameraRecord& camera, int pane) override;

protected:
    /// Begins to watch: nothing is decoded for alarms that nobody has asked to see.
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;
    void closePane(int pane) override;
    void cameraChanged(const CameraRecord* camera, const CameraRecord& before) override;
    void cameraGoes(const CameraRecord* camera) override;

private Q_SLOTS:
    void motionChanged(bool motion);

private:
    struct Watched
    {
        const CameraRecord* camera;
        QSharedPointer<VideoSource> source;
    };

    void watch(const CameraRecord& camera);
    void unwatch(const CameraRecord* camera);
    void raise(const CameraRecord& camera);

    const CameraList& m_cameras;
    CameraHub* m_hub;
    ClientArchive* m_archive;
    AlarmBoard m_board;
    QVector<Watched> m_watched;
};
