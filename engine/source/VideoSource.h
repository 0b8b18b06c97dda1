#pragma once

#include "decode/Frame.h"
#include "source/ShownSize.h"
#include "source/SourceFeed.h"
#include "source/SourceState.h"

#include <QObject>

class PacketSink;
class SoundSink;
struct MotionRule;
struct SourceShare;

/// One camera, stream or file that plays. It lives in the main thread and decodes in a thread of its own;
/// nothing here waits for that thread, so that a stuck source holds up neither a stop nor the destructor. A
/// lost source is tried again with growing pauses.
class VideoSource : public QObject
{
    Q_OBJECT

public:
    /// A source that plays what `make` gives.
    explicit VideoSource(FeedMaker make, QObject* parent = nullptr);
    ~VideoSource() override;

    void start();
    void stop();
    /// A paused file holds its place; a paused live source goes on unseen.
    void setPaused(bool paused);

    SourceState state() const;
    /// Why the source was lost, one line; empty as soon as it plays.
    QString reason() const;
    /// The newest picture, kept after a loss; null before the first one and after stop().
    FramePtr frame() const;
    /// True while live pictures are shown more than half a second after they came, or are left out because
    /// there is no time to decode them.
    bool isLate() const;
    /// True while a live source that plays has given no picture for three of its usual intervals, at least
    /// two seconds.
    bool isSilent() const;
    /// How long ago frame() came, milliseconds; 0 without one.
    int frameAgeMs() const;
    /// How long until a lost source is tried again, milliseconds; 0 for one that is not lost.
    int retryMs() const;

    /// Turns and zooms the camera, if it is one that can; the commands are those of the deck's
    /// sig_SendPtzCommand.
    virtual void ptz(int command, bool start);

    /// Without anybody who sees or hears it, a live source is decoded no further than motion detection needs:
    /// its packets come all the same, and the newest key frame is there at once when it is seen again. True
    /// at first.
    void setWatched(bool watched);

    /// From now on frames of encoded pictures come in the size in which they are shown, smoothed; in their
    /// own size at first.
    void setShownSize(const ShownSize& shown);

    /// Gives the source's packets to a ring or a recorder. A source whose pictures were never encoded is
    /// encoded only while it has sinks.
    void addSink(std::shared_ptr<PacketSink> sink);
    void removeSink(const std::shared_ptr<PacketSink>& sink);

    /// True if it has sound, as far as is known by now.
    bool hasSound() const;
    /// Who hears it; null, as at first, for nobody. A paused source and one that plays at another speed than
    /// its own is silent.
    void setSoundSink(std::shared_ptr<SoundSink> sink);

    /// Looks for motion in the pictures as long as anybody who called it with true hasn't called it with
    /// false; nobody at first.
    void setMotionDetection(bool on);
    /// What counts as motion from now on.
    void setMotionRule(const MotionRule& rule);
    bool hasMotion() const;

Q_SIGNALS:
    /// frame() is new. A receiver that is slow misses frames; they never queue up.
    void frameReady();
    /// state(), reason(), hasSound(), isLate() or isSilent() is new; short states may have been skipped.
    void stateChanged();
    void motionChanged(bool motion);

protected:
    void seekTo(qint64 ms);
    void customEvent(QEvent* event) override;

private:
    FeedMaker m_make;
    std::shared_ptr<SourceShare> m_share;
    std::shared_ptr<SourceLink> m_link;
    bool m_isPaused = false;
};
