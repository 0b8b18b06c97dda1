#pragma once

#include "fleet/DeskNews.h"
#include "fleet/FleetCameras.h"
#include "fleet/FleetDatabase.h"
#include "fleet/FleetMark.h"

#include <QBasicTimer>
#include <QHash>
#include <QObject>
#include <QUuid>

#include <functional>

/// A desk's connection to the shared index: what changes there, as it happens, and answers to questions. What
/// happened while the connection was lost is told afterwards. Lives in a thread of its own.
class FleetWatch : public QObject
{
    Q_OBJECT

public:
    /// Gets null while the server is away.
    using Question = std::function<void(FleetDatabase* database)>;

    explicit FleetWatch(const FleetAddress& address) : m_database(address) {}

    /// In its own thread, as all of these.
    void start();
    void end();
    void answer(const Question& question);
    /// What tells this desk from all others; from any thread.
    const QString& desk() const { return m_desk; }

Q_SIGNALS:
    /// Recordings or marks of this camera are new; of all cameras if the name is empty.
    void changed(const QString& camera);
    /// Marks of a camera that are new, go on or were acknowledged, by their start, some maybe once more. What
    /// comes more than a day late is none of them, nor is all but the last of what was before the first.
    void marked(const QString& camera, const QVector<FleetMark>& marks);
    /// An answer about a camera came too late for who asked.
    void answered(const QString& camera);
    /// All cameras, as they are now.
    void camerasRead(const QVector<LeasedCamera>& cameras);
    /// Who turns which camera, all of it, and what came of wanting one.
    void leasesRead(const QVector<PtzLease>& leases);
    void leaseAnswered(const PtzAnswer& answer);
    /// What this login may do; at each connection.
    void rightsRead(const FleetRights& rights);
    /// All views that desks share.
    void viewsRead(const QVector<SharedView>& views);
    /// Why the server is away, one line; empty when it is there.
    void awayChanged(const QString& reason);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct News;

    bool join();
    void look();
    bool catchUp();
    bool readLine();
    void forget();
    std::optional<News> news();
    bool tell(const News& news);
    bool readCameras();
    bool readLeases();
    bool readRights();
    bool readViews();
    bool readMarks(const QString& camera);
    void lose();

    const QString m_desk = QUuid::createUuid().toString(QUuid::WithoutBraces);
    FleetDatabase m_database;
    /// The index at one moment.
    struct Moment
    {
        qint64 last = 0; ///< the number of the newest change
        qint64 over = 0; ///< all transactions before this one are over; 0 for none that is known
        qint64 ms = 0;   ///< by the server's clock
    };
    Moment m_begin; ///< when this desk first saw it
    Moment m_now;
    QString m_line;         ///< which server it is, and which of its histories
    bool m_isOther = false; ///< it is another one than before
    qint64 m_seen = -1;     ///< the last change that was told; -1 before the first connection
    QString m_away = "?";   ///< what was told last
    struct Told
    {
        qint64 lastMs = 0; ///< the start of the newest mark that was told
        qint64 over = 0;   ///< of transactions before this one all marks were told
    };
    QHash<QString, Told> m_told;
    QBasicTimer m_timer;
};
