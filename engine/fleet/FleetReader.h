#pragma once

#include "archive/RecordingReader.h"
#include "fleet/DeskNews.h"
#include "fleet/FleetAddress.h"
#include "fleet/FleetCameras.h"
#include "fleet/FleetMark.h"

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QHash>
#include <QObject>

#include <any>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

class FleetDatabase;
class FleetIndex;
class FleetWatch;
class QThread;

/// What a desk sees of the shared index. It waits for the server for some milliseconds and no longer: what
/// comes later is kept for the next who asks, and told by changed(). What is kept is asked for anew when it
/// has changed, and shown until the answer is there, also while the server is away.
class FleetReader : public QObject, public RecordingReader
{
    Q_OBJECT

public:
    explicit FleetReader(const FleetAddress& address, QObject* parent = nullptr);
    ~FleetReader() override;

    std::optional<QVector<Segment>> segments(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<QVector<Span>> spans(const QString& camera, qint64 fromMs, qint64 toMs) override;
    QHash<QString, RecordedTimes> times(const QStringList& cameras, qint64 fromMs, qint64 toMs) override;
    int camerasAtOnce() const override;
    std::optional<TrackStretch> stretch(const QString& camera, qint64 fromMs, qint64 toMs) override;
    std::optional<qint64> newestMs(const QString& camera) override;
    std::optional<Span> spanAfter(const QString& camera, qint64 ms) override;
    std::optional<Span> spanBefore(const QString& camera, qint64 ms) override;

    /// Puts these cameras into the shared list and takes those out. False with the reason, in one line, if
    /// the server refuses it or does not answer within three seconds.
    bool changeCameras(const QVector<CameraDescription>& cameras, const QStringList& gone, QString* error);

    /// The mark of a camera that begins then was seen by somebody, which all desks hear of, at the latest
    /// when the server is back; refused to a mere viewer.
    void acknowledge(const QString& camera, qint64 startMs);

    /// Takes a camera for this desk alone, to turn it, or keeps it for longer: leaseAnswered() tells. Asks
    /// who has it for it; gives it away; keeps it from who asks.
    void takePtz(const QString& camera);
    void askPtz(const QString& camera);
    void givePtz(const QString& camera);
    void keepPtz(const QString& camera);

    /// Keeps a view for all desks in place of the one of that name, which was `before`; an empty description
    /// removes it. As changeCameras().
    bool changeView(const SharedView& view, const QString& before, QString* error);

    /// For a reader in another thread.
    ReaderMaker readerMaker() const;

    /// Why the server is away, one line; empty when it is there.
    const QString& away() const { return m_away; }

Q_SIGNALS:
    /// There is more or less of this camera now; of all cameras if the name is empty.
    void changed(const QString& camera);
    /// As FleetWatch's.
    void marked(const QString& camera, const QVector<FleetMark>& marks);
    void camerasRead(const QVector<LeasedCamera>& cameras);
    void leasesRead(const QVector<PtzLease>& leases);
    void leaseAnswered(const PtzAnswer& answer);
    void rightsRead(const FleetRights& rights);
    void viewsRead(const QVector<SharedView>& views);
    /// away() is new.
    void awayChanged();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Answer
    {
        QString camera;
        std::any value; ///< empty until there has been one
        bool isStale = true;
        bool isAsked = false;
        bool isLate = false; ///< somebody has gone without it
    };
    /// Shared with the thread that asks, which may outlive this for a moment.
    struct Answers
    {
        std::mutex mutex;
        std::condition_variable arrived;
        QHash<QString, Answer> all;
        std::atomic<bool> isPulseDue{false};  ///< the thread that asks has not come round yet
        QVector<QPair<QString, qint64>> seen; ///< marks to be acknowledged
    };
    struct Window;

    void makeRoom();
    bool isDue(const QString& key, const QString& camera);
    void await(std::unique_lock<std::mutex>& lock, const QStringList& keys);
    static void take(Answers& answers, FleetWatch* watch, const QString& key, const std::any& value);

    template <class Value> using Question = std::function<std::optional<Value>(FleetIndex& index)>;

    template <class Value>
    std::optional<Value> ask(const QString& key, const QString& camera, Question<Value> question);
    template <class Value> void post(const QString& key, Question<Value> question);
    void postTimes(const QStringList& cameras, qint64 fromMs, qint64 toMs);
    std::optional<Window> window(const QString& camera, qint64 fromMs, qint64 toMs);
    void sayAcknowledged();
    /// In the thread that asks; null while the server is away.
    void send(const std::function<void(FleetDatabase*)>& question);
    using PtzWish = bool (*)(FleetDatabase& database, const QString& desk, const QString& camera);
    void sendPtz(PtzWish wish, const QString& camera);
    bool change(const std::function<bool(FleetDatabase&)>& change, QString* error);
    void takeChange(const QString& camera);
    void takeAway(const QString& reason);
    void tellAway(const QString& reason);

    std::shared_ptr<Answers> m_answers = std::make_shared<Answers>();
    FleetAddress m_address;
    FleetWatch* m_watch;
    QThread* m_thread;
    QDeadlineTimer m_restsUntil; ///< the server was slow: nobody waits for it till then
    QString m_away = "the server was not asked yet";
    QString m_watchAway = m_away; ///< the same, as far as the thread that asks could tell
    QBasicTimer m_pulse;
    int m_missedPulses = 0;
};
