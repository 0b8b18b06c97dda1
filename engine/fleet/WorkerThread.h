#pragma once

#include <QThread>

/// Starts a worker, which has start() and end(), in a thread that goes with it.
template <class Worker> QThread* threadOf(Worker* worker)
{
    auto* thread = new QThread;
    worker->moveToThread(thread);
    QObject::connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    QObject::connect(thread, &QThread::started, worker, &Worker::start);
    thread->start();
    return thread;
}

/// Whoever made the worker hears nothing more of it. One that waits for a server that is gone ends a few
/// seconds later; wait() on the thread tells.
template <class Worker> void askToEnd(Worker* worker)
{
    worker->disconnect();
    QMetaObject::invokeMethod(
        worker,
        [worker] {
            worker->end();
            worker->thread()->quit();
        },
        Qt::QueuedConnection);
}
