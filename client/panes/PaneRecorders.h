#pragma once

#include <QHash>
#include <QObject>
#include <QSharedPointer>

class CameraHub;
class CPaneDeck;
class StreamRecorder;
class VideoSource;
struct CameraRecord;

/// Writes what the cameras of a deck's panes send into files, one at a time for each pane. A recording goes
/// on while its pane is off screen. The panes' check states for record follow.
class PaneRecorders : public QObject
{
    Q_OBJECT

public:
    PaneRecorders(CPaneDeck* deck, CameraHub* hub, QObject* parent);
    ~PaneRecorders() override;

    /// Starts a recording, or ends the one that runs. Without a camera nothing starts.
    void toggle(int pane, const CameraRecord* camera);

    void stopAll();

public Q_SLOTS:
    /// Ends a pane's recording if one runs.
    void stop(int pane);

Q_SIGNALS:
    /// A line for the log.
    void told(const QString& text);
    /// A recording lies there now.
    void saved(const QString& path);
    /// A pane's recording has begun or ended.
    void changed(int pane);

private Q_SLOTS:
    void recorderFailed(const QString& error);

private:
    struct Recording
    {
        QSharedPointer<VideoSource> source;
        StreamRecorder* recorder = nullptr;
    };

    void start(int pane, const CameraRecord& camera);
    /// Forgets a recording, unchecks the button and tells how it went.
    void drop(int pane, const QString& text);
    void refuse(int pane, const QString& text);

    CPaneDeck* m_deck;
    CameraHub* m_hub;
    QHash<int, Recording> m_recordings;
};
