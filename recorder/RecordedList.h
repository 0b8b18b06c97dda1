#pragma once

#include "cameras/CameraDescription.h"
#include "decode/MotionRule.h"

#include <QDateTime>
#include <QHash>
#include <QObject>

class CameraPasswords;
struct RecorderOptions;

/// A camera to record, and the name it has in the archive.
struct RecordedCamera
{
    QString name;
    SourceAddress address;
    MotionRule motion{};
    bool isOnMotion = false; ///< recorded only while something moves, and around it
};

/// What of a list of cameras is to be recorded, with their passwords, which may come some time later.
class RecordedList : public QObject
{
    Q_OBJECT

public:
    explicit RecordedList(const RecorderOptions& options);

    /// Takes the place of what was taken before. What can't be recorded is told on the standard error stream.
    void take(const QVector<CameraDescription>& cameras);
    /// Takes the same once more if the file of passwords is another one than before.
    void refresh();
    /// The id of a camera that is to be recorded, by its name in the archive; empty for none.
    QString idOf(const QString& name) const { return m_ids.value(name); }

Q_SIGNALS:
    /// All of them, no name twice.
    void ready(const QVector<RecordedCamera>& cameras);

private:
    void takePassword(const QString& id, const QString& password);

    QDateTime passwordsTime() const;

    QString m_passwordsPath;
    CameraPasswords* m_store;
    QDateTime m_passwordsTime; ///< when those that were taken last were written
    QVector<CameraDescription> m_cameras;
    QHash<QString, CameraDescription> m_asked; ///< those whose passwords are looked for, by their ids
    QVector<RecordedCamera> m_found;
    QHash<QString, QString> m_ids;
};
