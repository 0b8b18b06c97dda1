#pragma once

#include "cameras/CameraDescription.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class CameraPasswords;

/// What a row of the device tree stands for. The row holds where the record lies, and the type has to come
/// first.
struct CameraRecord
{
    int type = 2; ///< 2 a camera, 1 a site, 0 a group
    QString name;
    std::optional<SourceAddress> address; ///< where a camera's video comes from; none while it has no use
    QString site;                         ///< the site and the group it is shown under; may be empty
    QString group;
    CameraDescription about{}; ///< all that is known of a camera; its id is what to keep, as names may change
};

/// Why a camera has no address; empty for one that has.
QString whyNoAddress(const CameraRecord& camera);

bool isSynthetic(const CameraRecord& camera); ///< a built-in one

/// True if both give the very same pictures.
bool isSameStream(const CameraRecord& one, const CameraRecord& other);

/// The cameras of the client, the user's or those of a trial, which are kept nowhere. A record stays where it
/// is while the list lives, even that of a camera that was removed, so that a pointer to it is never wild.
class CameraList : public QObject
{
    Q_OBJECT

public:
    explicit CameraList(QObject* parent = nullptr);
    ~CameraList() override;

    /// The first of the built-in synthetic cameras.
    static QVector<CameraDescription> syntheticCameras(int count);

    /// These, and a camera of the command line: for a trial.
    void addSynthetic(int count);
    void add(const SourceAddress& address);
    /// Takes the cameras of a file in place of those here, and keeps in it each change from now on. False
    /// with a reason if the file can't be understood; then no change is taken. Without a file the cameras of
    /// before stay, and the first change makes one.
    bool keepIn(const QString& path, QString* error);
    /// The same for a list that is kept elsewhere, of which takeKept() tells: `keep` takes each change made
    /// here, or refuses it with the reason in one line. Passwords are kept beside a file of that path.
    using Keeper = std::function<bool(const QVector<CameraDescription>& cameras, QString* error)>;
    void keepBy(Keeper keep, const QString& path);
    /// Who tells whether the login may change a camera, or for an empty id add any; all may at first.
    void setRights(std::function<bool(const QString& id)> mayChange);
    bool mayChange(const QString& id = QString()) const { return !m_mayChange || m_mayChange(id); }
    /// The list as it is kept now, whoever has changed it.
    void takeKept(const QVector<CameraDescription>& cameras);

    int count() const { return int(m_cameras.size()); }
    const CameraRecord& at(int index) const { return *m_cameras[size_t(index)]; }

    /// The camera of that name or id; null if there is none.
    const CameraRecord* find(const QString& name) const;
    const CameraRecord* byId(const QString& id) const;
    /// The one whose recordings go by that name.
    const CameraRecord* byArchiveName(const QString& name) const;

    QString passwordOf(const QString& id) const { return m_passwords.value(id); }

    QVector<CameraDescription> descriptions() const;
    /// Makes the list that one, by ids: what is new is added, what is missing removed. False, with nothing
    /// changed and the reason in one line, if two share a name, or it can't be kept.
    /// `passwords` has the new ones by the cameras' ids; all others stay.
    bool setDescriptions(QVector<CameraDescription> cameras, QString* error,
                         const QHash<QString, QString>& passwords = {});

Q_SIGNALS:
    void added(const CameraRecord* camera);
    /// `before` is what it was.
    void changed(const CameraRecord* camera, const CameraRecord& before);
    /// Everybody lets go of it now: it is still there.
    void aboutToBeRemoved(const CameraRecord* camera);
    void removed(const CameraRecord* camera);
    /// After all that is told of one change of the list: its order may be another one now.
    void sorted();
    /// mayChange() may be new.
    void rightsChanged();
    /// A password can't be kept; one line.
    void troubled(const QString& error);

private:
    CameraRecord recordOf(const CameraDescription& about) const;
    void takePassword(const QString& id, const QString& password);
    void apply(const QVector<CameraDescription>& cameras);
    void keepPasswords(const QHash<QString, QString>& passwords);
    void forgetPasswords(const QVector<CameraDescription>& cameras);
    void addToTrial(CameraDescription about);
    void drop(const QVector<CameraDescription>& cameras);
    QVector<QPair<CameraRecord*, CameraRecord>> take(const QVector<CameraDescription>& cameras);

    std::deque<CameraRecord> m_records;       ///< all that ever were
    std::vector<CameraRecord*> m_cameras;     ///< those there are
    QHash<QString, QString> m_passwords;      ///< by id
    QSet<QString> m_waiting;                  ///< ids of cameras whose password has not been found yet
    std::unique_ptr<CameraPasswords> m_store; ///< none for a trial
    std::function<bool(const QString& id)> m_mayChange;
    Keeper m_keep; ///< none for a trial
};
