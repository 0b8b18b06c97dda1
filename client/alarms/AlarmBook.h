#pragma once

#include <QObject>
#include <QVector>

/// One alarm of a camera.
struct Alarm
{
    quint64 number = 0; ///< never that of another one
    QString cameraId;
    QString cameraName; ///< as it was then
    qint64 startMs = 0; ///< since 1970
    qint64 endMs = 0;   ///< 0 while it lasts
    bool isSeen = false;
};

/// The alarms of this start, newest first, and which of them nobody has seen yet. One that follows soon after
/// another of the same camera goes on with it, so that a tree in the wind fills no list.
class AlarmBook : public QObject
{
    Q_OBJECT

public:
    static constexpr int Most = 500;
    static constexpr qint64 SoonMs = 10'000;

    using QObject::QObject;

    /// True if it is a new one; not if it goes on with the last, or lasts already.
    bool begin(const QString& cameraId, const QString& cameraName, qint64 nowMs);
    void end(const QString& cameraId, qint64 nowMs);
    /// One that was over before anybody here knew of it; not what lay in another one of the camera.
    void addPast(const QString& cameraId, const QString& cameraName, qint64 startMs, qint64 endMs);

    const QVector<Alarm>& alarms() const { return m_alarms; }
    int unseenCount() const;
    /// False where the login may see what it does not acknowledge for all.
    bool mayAcknowledge() const { return m_mayAcknowledge; }
    void setAcknowledging(bool may);
    void setSeen(quint64 number);
    void setSeenOf(const QString& cameraId);
    void setSeenAt(const QString& cameraId, qint64 startMs);
    void setAllSeen();

Q_SIGNALS:
    void changed();
    /// Somebody has seen this one, which began then.
    void seen(const QString& cameraId, qint64 startMs);

private:
    Alarm* newestOf(const QString& cameraId);
    template <class Test> void setSeenWhere(Test test);

    QVector<Alarm> m_alarms;
    quint64 m_lastNumber = 0;
    bool m_mayAcknowledge = true;
};
