#pragma once

#include <QObject>

class QMenu;

/// What the keys do while the focus is in a playback deck.
class PlaybackKeys : public QObject
{
    Q_OBJECT

public:
    enum Command
    {
        PlayOrPause,
        Back, ///< a picture in a pause, else ten seconds
        Forward,
        Faster,
        Slower,
        DayBegin,
        DayEnd,
        NextMark,
        PreviousMark,
        TurnRound,
        Export,
    };

    /// `place` is the widget in which the keys mean this; its children belong to it, and a click into them
    /// gives it the focus.
    explicit PlaybackKeys(QWidget* place);

    /// Entries that do the same, each beside its key.
    void fillMenu(QMenu* menu);

Q_SIGNALS:
    void pressed(PlaybackKeys::Command command);
};
