#pragma once

#include "archive/PlayGroup.h"

#include <QHash>
#include <QObject>
#include <QSharedPointer>

#include <memory>

class ClientArchive;
class CPaneDeck;
class DeckStreams;
struct CameraRecord;

/// What the panes of a playback deck play: the recordings of their cameras, all in step by one clock, or a
/// file each, by a clock of its own that begins at 0. The panes' buttons and speeds follow. A pane that
/// doesn't exist or plays nothing counts as one of a camera.
class PaneTracks : public QObject
{
    Q_OBJECT

public:
    PaneTracks(CPaneDeck* deck, DeckStreams* streams, const ClientArchive* archive);
    ~PaneTracks() override;

    void assignCamera(int pane, const CameraRecord& camera);
    /// Puts a file into a pane in place of whatever was there; false, with nothing changed, if it has no
    /// video.
    bool assignFile(int pane, const QString& path);
    /// Takes out what a pane plays.
    void clear(int pane);
    /// All panes: to be called while the streams and who listens to them are whole.
    void clearAll();

    bool isFile(int pane) const { return m_files.contains(pane); }
    /// How far a pane's file has played, 0 to 1000; 0 if it plays none.
    int fileProgress(int pane) const;
    /// How long it is, milliseconds.
    qint64 fileLength(int pane) const;
    /// What there is to play in a pane; null if nothing is assigned to it.
    std::shared_ptr<const SegmentTrack> trackAt(int pane);
    /// What there is to play in a pane from one moment to another.
    QVector<TrackPiece> piecesAt(int pane, qint64 fromMs, qint64 toMs);
    const PlaybackClock& clockAt(int pane) { return groupAt(pane).clock(); }

    /// Lets the pane, and all that are in step with it, run or stand still.
    void play(int pane, bool run);
    /// Their speed; 1024 is normal, see PlaybackClock::setSpeed().
    void setSpeed(int pane, int speed);
    /// Turns them round: what runs goes on backwards, or forwards again.
    void setBackward(int pane, bool backward) { groupAt(pane).setBackward(backward); }
    /// Puts a pane's file to a place in it, 0 to 1000. A pane without a file does nothing.
    void seekFile(int pane, int progress);
    /// Puts what a pane plays to a moment by its clock: its file, or the recordings of all cameras.
    void seek(int pane, qint64 ms);
    /// Puts the recordings of all cameras to a moment, milliseconds since 1970.
    void seekRecordings(qint64 ms);
    /// The tracks of all cameras know what there is around a moment, and what comes next.
    void follow(qint64 ms);
    /// The moment that the recordings are at.
    qint64 recordedMoment() const { return m_group.clock().position(); }
    /// seekRecordings() has been called, so that the cameras' clock means something.
    bool isPlaced() const { return m_isPlaced; }

Q_SIGNALS:
    /// A clock has come to the end of all that plays by it.
    void ended();
    /// Or, backwards, to its beginning.
    void begun();

private:
    struct OpenFile;

    QSharedPointer<VideoSource> makeSource(int pane, const CameraRecord& camera);
    std::shared_ptr<SegmentTrack> trackOf(const QString& camera);
    void takeArchive(const QString& camera);
    void read(const QString& camera, SegmentTrack& track);
    PlayGroup& groupAt(int pane);
    QVector<int> panesOf(const PlayGroup& group);
    void lookBack(qint64 ms);
    void readAll(qint64 fromMs, qint64 toMs);
    void listenTo(const PlayGroup& group);
    void showRest(const PlayGroup& group);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    const ClientArchive* m_archive;
    PlayGroup m_group;
    QHash<QString, std::shared_ptr<SegmentTrack>> m_tracks;
    QHash<int, QSharedPointer<OpenFile>> m_files;
    qint64 m_fromMs = 0; ///< the stretch that the cameras' tracks know
    qint64 m_toMs = 0;
    bool m_isPlaced = false;
};
