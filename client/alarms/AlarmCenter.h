#pragma once

#include "alarms/AlarmBook.h"
#include "alarms/AlarmRules.h"
#include "alarms/AlarmTone.h"

#include <QHash>
#include <QSharedPointer>

class CameraHub;
class CameraList;
class ClientArchive;
class DesktopNotice;
class VideoSource;
struct CameraRecord;
struct Span;

/// Alarms, whatever tab is open: looks for motion in the small streams of the cameras, writes what is found
/// into the book and the recordings, and makes it heard. A trial's cameras raise their alarms in silence.
class AlarmCenter : public QObject
{
    Q_OBJECT

public:
    /// How many of the synthetic cameras are watched, from the list's start; of all others none is left out.
    static constexpr int WatchedSynthetics = 8;

    /// All must outlive it. It begins once the first pictures have had their time.
    AlarmCenter(const CameraList& cameras, CameraHub* hub, ClientArchive* archive, bool isTrial);
    ~AlarmCenter() override;

    /// Looks at no camera itself: others tell. Before it begins.
    void leaveToOthers() { m_isTold = true; }

    AlarmBook* book() { return &m_book; }
    const AlarmRules& rules() const { return m_rules; }
    /// Keeps other rules, and goes by them at once.
    void setRules(const AlarmRules& rules);

    /// An alarm of a camera begins or ends, by motion or by what the camera itself says.
    void note(const CameraRecord& camera, bool on);
    /// The same where recorders look for motion; when it began, since 1970.
    void noteTold(const CameraRecord& camera, qint64 startMs);
    /// The same of one that was over before a later one began: it is listed, and no more.
    void notePast(const CameraRecord& camera, const Span& span);

Q_SIGNALS:
    /// A new one; it stands in the book.
    void raised(const CameraRecord* camera);

private:
    /// What says that something happens at a camera; it lasts until all of them say that it is over.
    enum class Witness
    {
        Picture = 1,
        Motion = 2, ///< the camera's own
        Input = 4,
    };

    void begin();
    void listen();
    void hear(const CameraRecord* camera, Witness witness, bool on);
    void watchAll();
    void watch(const CameraRecord* camera);
    void unwatch(const CameraRecord* camera);
    void cameraChanged(const CameraRecord* camera, const CameraRecord& before);
    QVector<const CameraRecord*> wanted() const;
    void tell(const CameraRecord& camera);

    const CameraList& m_cameras;
    CameraHub* m_hub;
    ClientArchive* m_archive;
    bool m_isTrial;
    bool m_isTold = false;
    bool m_hasBegun = false;
    AlarmRules m_rules = AlarmRules::load();
    AlarmBook m_book;
    AlarmTone m_tone;
    DesktopNotice* m_notice;
    QHash<const CameraRecord*, QSharedPointer<VideoSource>> m_watched;
    QHash<const CameraRecord*, int> m_witnesses; ///< those that say so now
};
