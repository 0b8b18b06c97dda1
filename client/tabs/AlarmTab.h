#pragma once

#include "tabs/AlarmBoard.h"
#include "tabs/DeckTab.h"

class AlarmCenter;
class ClientArchive;
struct Alarm;

/// Alarms: a camera that sees something move comes up in a pane and stays until it is taken down by hand,
/// which counts as seen. In the recordings an alarm lasts until then or until nothing moves any more. A
/// camera dropped on a pane is up as well, without the alarm mark. Below the deck lies the list of all
/// alarms.
class AlarmTab : public DeckTab
{
    Q_OBJECT

public:
    AlarmTab(CameraHub* hub, EventLog* log, ClientArchive* archive, AlarmCenter* alarms);

    void showCamera(const CameraRecord& camera, int pane) override;

Q_SIGNALS:
    /// What was recorded at an alarm is to be played, from a moment, milliseconds since 1970.
    void playAsked(const QString& cameraId, qint64 fromMs);

protected:
    /// Brings up what was raised while nobody looked.
    void firstShown() override;
    void buttonClicked(int pane, Btn_type_EX button) override;
    void closePane(int pane) override;

private:
    void takeDown(int pane);
    void raise(const CameraRecord* camera);
    void bringUp(const CameraRecord& camera, const QString& time);

    const CameraList& m_cameras;
    ClientArchive* m_archive;
    AlarmCenter* m_alarms;
    AlarmBoard m_board;
};
