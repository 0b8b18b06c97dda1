#pragma once

#include <QObject>

class CameraStrips;
class ClientArchive;
class CPaneDeck;
class DayRows;
class DayScale;
class DeckStreams;
class PaneTracks;
class PlaybackBar;
class PlaybackNavigator;
class PlaybackOutput;
class QHBoxLayout;
class QScrollArea;
class QWidget;

/// What a playback tab shows of the day beside its deck: the strips of its cameras below the scale, the list
/// of motion and alarms, and what is at the pointer or the dragged thumb.
class DayOverview : public QObject
{
    Q_OBJECT

public:
    /// What it shows, and what it works.
    struct Parts
    {
        CPaneDeck* deck;
        DeckStreams* streams;
        PaneTracks* tracks;
        DayScale* scale;
        PlaybackNavigator* navigator;
        PlaybackOutput* output;
        const ClientArchive* archive;
    };

    DayOverview(const Parts& parts, QWidget* tab);

    /// The deck with all that lies around it, for the tab to lay out; `bar` gets the buttons that show and
    /// hide it.
    QHBoxLayout* layOut(PlaybackBar* bar);
    /// The moment that is shown; below 0 for none.
    void showMoment(qint64 ms);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void chooseRow(int row);
    void chooseMark(int pane, qint64 ms);
    void fitStrips();
    void showStretch();
    int secondOf(qint64 ms) const;

    Parts m_parts;
    QWidget* m_tab;
    DayRows* m_rows;
    CameraStrips* m_strips;
    QScrollArea* m_scroll;
    PlaybackBar* m_bar = nullptr;
    qint64 m_fromMs = 0; ///< what is to be exported; nothing if both are the same
    qint64 m_toMs = 0;
};
