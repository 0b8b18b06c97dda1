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
    const QString path = UserFiles::newPath(UserFiles::Kind::Recording, camera);
    const qint64 from = qMin(start, ms);
    const qint64 to = qMax(start, ms);
    workBeside([path, from, to, found = pieces(from, to)] {
        QString error;
        const bool isSaved = writeClip(found, from, to, path, &error);
        return isSaved ? word("clip saved: %1").arg(path) : word("no clip: %1").arg(engineText(error));
    });
    return false;
}

void PaneClips::download(const TrackPiece& piece, const QString& camera)
{
    const QString path = UserFiles::newPath(UserFiles::Kind::Recording, camera);
    workBeside([=] {
        const bool isSaved = QFile::copy(piece.path, path);
        return (isSaved ? word("downloaded: %1") : word("can't write %1")).arg(path);
    });
}

/// `work` gives a line for the log.
void PaneClips::workBeside(std::function<QString()> work)
{
    const QPointer<PaneClips> alive(this);
    QThreadPool::globalInstance()->start([alive, work = std::move(work)] {
        const QString line = work();
        QMetaObject::invokeMethod(qApp, [alive, line] {
            if (alive)
                Q_EMIT alive->told(line);
        });
    });
}
