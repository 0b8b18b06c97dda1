#include "fleet/FleetLink.h"

#include "fleet/WorkerThread.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

namespace {

constexpr unsigned long PatienceMs = 3000;
const QLatin1String IdFile("/recorder-id");

} // namespace

FleetLink::FleetLink(const FleetAddress& address, const FleetRecorder& recorder, const QString& indexPath,
                     QObject* parent)
    : QObject(parent), m_sender(new SpoolSender(address, recorder, indexPath)),
      m_keeper(new LeaseKeeper(address, recorder, QFileInfo(indexPath).path()))
{
    connect(m_sender, &SpoolSender::troubled, this, &FleetLink::troubled);
    connect(m_keeper, &LeaseKeeper::camerasChanged, this, &FleetLink::camerasChanged);
    connect(m_keeper, &LeaseKeeper::told, this, &FleetLink::told);
    m_sending = threadOf(m_sender);
    m_leasing = threadOf(m_keeper);
}

/// A thread that waits for a server that is gone ends by itself a few seconds later.
FleetLink::~FleetLink()
{
    askToEnd(m_sender);
    askToEnd(m_keeper);
    m_leasing->wait(PatienceMs);
    m_sending->wait(PatienceMs);
}

void FleetLink::setReady(const QString& camera)
{
    QMetaObject::invokeMethod(m_keeper, [keeper = m_keeper, camera] { keeper->setReady(camera); });
}

void FleetLink::setStalled(const QStringList& cameras, bool isDiskInDoubt)
{
    QMetaObject::invokeMethod(m_keeper, [keeper = m_keeper, cameras, isDiskInDoubt] {
        keeper->setStalled(cameras, isDiskInDoubt);
    });
}

QString archiveId(const QString& directory)
{
    QFile file(directory + IdFile);
    if (file.open(QIODevice::ReadOnly)) {
        const QUuid id(QString::fromLatin1(file.read(64)).trimmed());
        return id.isNull() ? QString() : id.toString(QUuid::WithoutBraces);
    }
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    QSaveFile fresh(directory + IdFile);
    const bool isKept =
        fresh.open(QIODevice::WriteOnly) && fresh.write(id.toLatin1() + '\n') > 0 && fresh.commit();
    return isKept ? id : QString();
}
