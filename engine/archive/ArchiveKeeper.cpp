#include "archive/ArchiveKeeper.h"

#include "archive/ArchiveWorker.h"

#include <QThread>

namespace {

constexpr unsigned long PatienceMs = 5000;

} // namespace

ArchiveKeeper::ArchiveKeeper(const QString& directory, const ArchiveLimits& limits, QObject* parent,
                             Telling telling)
    : QObject(parent), m_thread(new QThread), m_worker(new ArchiveWorker(directory, limits, telling))
{
    qRegisterMetaType<ArchiveRole>();
    m_paths = m_worker->paths();
    m_worker->moveToThread(m_thread);
    connect(m_worker, &ArchiveWorker::roleTaken, this, &ArchiveKeeper::takeRole);
    connect(m_worker, &ArchiveWorker::changed, this, &ArchiveKeeper::changed);
    connect(m_worker, &ArchiveWorker::troubled, this, &ArchiveKeeper::troubled);
    connect(m_worker, &ArchiveWorker::sampleRemoved, this, &ArchiveKeeper::sampleRemoved);
    connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread->start();
}

ArchiveKeeper::~ArchiveKeeper()
{
    m_worker->disconnect(this);
    QMetaObject::invokeMethod(m_worker, &ArchiveWorker::end, Qt::QueuedConnection);
    // A disk that hangs holds its thread: it is left to itself.
    if (m_thread->wait(PatienceMs))
        delete m_thread;
}

void ArchiveKeeper::start()
{
    QMetaObject::invokeMethod(m_worker, &ArchiveWorker::start, Qt::QueuedConnection);
}

void ArchiveKeeper::takeRole(ArchiveRole role, const QString& reason)
{
    m_role = role;
    m_reason = reason;
    Q_EMIT roleChanged();
}

void ArchiveKeeper::finish(const FinishedPart& part)
{
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, part] { worker->finish(part); }, Qt::QueuedConnection);
}

void ArchiveKeeper::setSpans(const QVector<CameraSpan>& spans)
{
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, spans] { worker->setSpans(spans); }, Qt::QueuedConnection);
}

void ArchiveKeeper::removeSample()
{
    QMetaObject::invokeMethod(m_worker, &ArchiveWorker::removeSample, Qt::QueuedConnection);
}

void ArchiveKeeper::makeRoom()
{
    QMetaObject::invokeMethod(m_worker, &ArchiveWorker::keepLimits, Qt::QueuedConnection);
}
