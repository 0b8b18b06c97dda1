#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

/// The passwords of cameras, by the cameras' ids: in the desktop's keyring where one answers, or else in a
/// file of their own, which its owner alone may read. What the keyring says comes later, by signals. The file
/// is read before each write, so that another program's passwords in it stay.
class CameraPasswords : public QObject
{
    Q_OBJECT

public:
    enum class Where
    {
        Keyring, ///< if one answers
        File,
    };

    explicit CameraPasswords(const QString& path, QObject* parent = nullptr, Where where = Where::Keyring);

    /// The file that belongs to a file of cameras: "passwords.json" beside it.
    static QString pathBeside(const QString& camerasPath);

    /// found() comes for each of these cameras, maybe at once.
    void look(const QStringList& ids);
    /// Keeps a password from now on; an empty one is taken out.
    void keep(const QString& id, const QString& password);

Q_SIGNALS:
    /// The password of a camera; empty if none is kept.
    void found(const QString& id, const QString& password);
    /// A password lies where it is to.
    void kept(const QString& id);
    /// A password can't be kept; one line.
    void failed(const QString& error);

private:
    void lookInKeyring(const QString& id);
    void keepInFile(const QString& id, const QString& password);
    bool hasKeyring() const;
    bool read(QHash<QString, QString>* passwords, QString* error) const;

    QString m_path;
    Where m_where;
};
