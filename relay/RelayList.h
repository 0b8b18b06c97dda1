#pragma once

#include "cameras/CameraDescription.h"

#include <QBasicTimer>
#include <QDateTime>
#include <QHash>
#include <QObject>

#include <memory>

class CameraPasswords;
class FleetReader;
struct LeasedCamera;
struct RelayOptions;

/// What there is to hand on: the cameras of a file or of a shared index, as they are now and whenever they
/// or their passwords change.
class RelayList : public QObject
{
    Q_OBJECT

public:
    explicit RelayList(const RelayOptions& options);
    ~RelayList() override;

    /// Begins to tell.
    void start();

Q_SIGNALS:
    /// All of them, by their paths.
    void ready(const QHash<QString, SourceAddress>& cameras);
    /// One line of what went wrong.
    void told(const QString& line);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QDateTime newest() const;
    void readFile();
    void take(const QVector<CameraDescription>& cameras);
    void takeLeased(const QVector<LeasedCamera>& cameras);
    void takePassword(const QString& id, const QString& password);
    void add(const QString& id, const SourceAddress& address, bool isSmall);

    QString m_camerasPath; ///< empty where the index says it
    QString m_passwordsPath;
    CameraPasswords* m_passwords;
    std::unique_ptr<FleetReader> m_index;
    QDateTime m_read; ///< how new the files were
    QBasicTimer m_timer;
    QVector<CameraDescription> m_cameras;
    QHash<QString, CameraDescription> m_asked; ///< those whose passwords are looked for, by their ids
    QHash<QString, SourceAddress> m_found;
};
