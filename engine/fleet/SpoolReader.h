#pragma once

#include <QJsonArray>
#include <QString>

#include <optional>

/// A spool, from the thread that delivers it.
class SpoolReader
{
public:
    /// `path` is that of the archive's index.
    explicit SpoolReader(const QString& path) : m_path(path) {}
    ~SpoolReader() { close(); }
    SpoolReader(const SpoolReader&) = delete;
    SpoolReader& operator=(const SpoolReader&) = delete;

    /// What waits, in order.
    struct Batch
    {
        QString spool;   ///< which of the spools this archive has had
        qint64 told = 0; ///< the number up to which the server is known to know it
        QJsonArray rows;
        qint64 last = 0; ///< the number of the last row
    };

    /// The first rows that wait, maybe none; nothing while the index is held by another or is not there.
    std::optional<Batch> next(int count);
    /// These are delivered, and the server knows the spool up to a number. False if they stay, to be offered
    /// again.
    bool drop(const Batch& batch, qint64 told);
    /// Which spool it is and up to where it is told, without rows.
    std::optional<Batch> told();
    /// All is to be delivered once more. False if that can't be noted now.
    bool renew();

private:
    bool isReady();
    void close();

    QString m_path;
    QString m_connection;
    quint64 m_inode = 0;
};
