#pragma once

#include "playback/PlaybackKeys.h"

#include <QObject>

#include <optional>

class ClientArchive;
class CPaneDeck;
class DayScale;
class DeckStreams;
class PaneTracks;
class SegmentTrack;

/// Goes about in what a playback deck plays: by pictures, seconds, days, motion and alarms. What counts is
/// the active pane: its file, or its camera, with which all cameras go. Moments are milliseconds since 1970,
/// or since a file's beginning.
class PlaybackNavigator : public QObject
{
    Q_OBJECT

public:
    PlaybackNavigator(CPaneDeck* deck, DeckStreams* streams, PaneTracks* tracks, DayScale* scale,
                      const ClientArchive* archive, QObject* parent);

    /// Does what a key stands for; where the active pane plays nothing, an export is all that it can.
    void obey(PlaybackKeys::Command command);

    /// Plays backwards, or forwards again, a pane and all in step with it.
    void turnRound();
    /// Back to the beginning, at normal speed.
    void stop(int pane);
    /// Of a pane and all in step with it; 1024 is normal.
    void changeSpeed(int pane, int speed);
    void seek(qint64 ms);
    /// The recordings, whatever the active pane plays.
    void seekRecordings(qint64 ms);
    /// The recordings to where the thumb of the scale is, and let them run, unless the pane shows a file.
    void seekChosenTime();
    void playChosenTime(int pane);
    /// The recordings to the first one of the day.
    void seekDay();
    /// By so many milliseconds; back over a gap, to what was recorded before it.
    void skip(qint64 ms);
    /// To the picture before the one that is shown, or behind it. It is looked for beside the GUI; until it
    /// is found no other one is.
    void step(bool forward);
    /// To the first recording of the day, or to the end of the last one.
    void goToDayBegin();
    void goToDayEnd();
    /// To the next or the previous motion or alarm of the active pane's camera, on whatever day.
    void goToMark(bool next);

Q_SIGNALS:
    void sought(qint64 ms);
    void exportAsked();
    /// A line for the log.
    void told(const QString& text);

private:
    int pane() const;
    qint64 now() const;
    qint64 shownMoment() const;
    void finishStep(int pane, std::optional<qint64> moment);

    CPaneDeck* m_deck;
    DeckStreams* m_streams;
    PaneTracks* m_tracks;
    DayScale* m_scale;
    const ClientArchive* m_archive;
    std::optional<qint64> m_lastStepMs; ///< where the last step went
    bool m_isStepping = false;
};
