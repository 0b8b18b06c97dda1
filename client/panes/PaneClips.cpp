#include "panes/PaneClips.h"

#include "archive/ClipWriter.h"
#include "common/EngineText.h"
#include "common/UserFiles.h"
#include "common/Words.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QPointer>
#include <QThreadPool>

QString PaneClips::clockText(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms).toString("yyyy-MM-dd HH:mm:ss");
}

bool PaneClips::mark(int pane, qint64 ms, const Pieces& pieces, const QString& camera)
{
    if (!isMarked(pane)) {
        m_starts.insert(pane, ms);
        Q_EMIT told(word("clip starts at %1").arg(clockText(ms)));
        return true;
    }
    const qint64 start = m_starts.take(pane);
    const qint64 from = qMin(start, ms);
    const qint64 to = qMax(start, ms);
    const QString path = UserFiles::newPath(UserFiles::Kind::Recording, camera, from);
    workBeside(path, [path, from, to, found = pieces(from, to)] {
        QString error;
        const bool isSaved = writeClip(found, from, to, path, &error);
        const QString line =
            isSaved ? word("clip saved: %1").arg(path) : word("no clip: %1").arg(engineText(error));
        return std::pair(line, isSaved);
    });
    return false;
}

void PaneClips::download(const TrackPiece& piece, const QString& camera)
{
    const QString path = UserFiles::newPath(UserFiles::Kind::Recording, camera, piece.startMs);
    workBeside(path, [=] {
        const bool isSaved = QFile::copy(piece.path, path);
        return std::pair((isSaved ? word("downloaded: %1") : word("can't write %1")).arg(path), isSaved);
    });
}

void PaneClips::workBeside(const QString& path, std::function<std::pair<QString, bool>()> work)
{
    const QPointer<PaneClips> alive(this);
    QThreadPool::globalInstance()->start([alive, path, work = std::move(work)] {
        const std::pair<QString, bool> done = work();
        QMetaObject::invokeMethod(qApp, [alive, path, done] {
            if (alive)
                Q_EMIT alive->told(done.first);
            if (alive && done.second)
                Q_EMIT alive->saved(path);
        });
    });
}
