#include "RelayList.h"

#include "RelayOptions.h"
#include "cameras/CameraFile.h"
#include "cameras/CameraPasswords.h"
#include "cameras/RelayAccess.h"
#include "fleet/FleetReader.h"

#include <QFileInfo>
#include <QTimerEvent>

namespace {

constexpr int LookMs = 2000;

} // namespace

RelayList::RelayList(const RelayOptions& options)
    : m_camerasPath(options.index ? QString() : options.camerasPath), m_passwordsPath(options.passwordsPath),
      m_passwords(new CameraPasswords(options.passwordsPath, this,
                                      options.hasPasswordsFile ? CameraPasswords::Where::File
                                                               : CameraPasswords::Where::Keyring))
{
    connect(m_passwords, &CameraPasswords::found, this, &RelayList::takePassword);
    connect(m_passwords, &CameraPasswords::failed, this, &RelayList::told);
    if (!options.index)
        return;
    m_index = std::make_unique<FleetReader>(*options.index);
    connect(m_index.get(), &FleetReader::camerasRead, this, &RelayList::takeLeased);
    connect(m_index.get(), &FleetReader::awayChanged, this, [this] {
        Q_EMIT told(m_index->away().isEmpty() ? "the shared index answers"
                                              : "the shared index: " + m_index->away());
    });
}

RelayList::~RelayList() = default;

void RelayList::start()
{
    m_timer.start(LookMs, this);
    m_read = newest();
    if (!m_camerasPath.isEmpty())
        readFile();
}

QDateTime RelayList::newest() const
{
    const QDateTime cameras = QFileInfo(m_camerasPath).lastModified();
    const QDateTime passwords = QFileInfo(m_passwordsPath).lastModified();
    return m_camerasPath.isEmpty() ? passwords : qMax(cameras, passwords);
}

void RelayList::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId() || newest() == m_read)
        return;
    m_read = newest();
    if (m_camerasPath.isEmpty())
        take(QVector<CameraDescription>(m_cameras));
    else
        readFile();
}

void RelayList::readFile()
{
    QString error;
    if (const auto cameras = CameraFile(m_camerasPath).read(&error))
        take(*cameras);
    else
        Q_EMIT told(error);
}

void RelayList::takeLeased(const QVector<LeasedCamera>& cameras)
{
    QVector<CameraDescription> known;
    for (const LeasedCamera& leased : cameras) {
        if (const std::optional<CameraDescription> camera = descriptionOf(leased))
            known.append(*camera);
    }
    take(known);
}

void RelayList::take(const QVector<CameraDescription>& cameras)
{
    m_cameras = cameras;
    m_asked.clear();
    m_found.clear();
    for (const CameraDescription& camera : cameras) {
        if (camera.isEnabled)
            m_asked.insert(camera.id, camera);
    }
    if (m_asked.isEmpty())
        Q_EMIT ready({});
    m_passwords->look(m_asked.keys());
}

void RelayList::takePassword(const QString& id, const QString& password)
{
    const auto asked = m_asked.constFind(id);
    if (asked == m_asked.constEnd())
        return;
    QString error;
    if (const std::optional<SourceAddress> address = asked->address(password, &error)) {
        add(id, *address, false);
        if (const std::optional<SourceAddress> small = address->small())
            add(id, *small, true);
    } else {
        Q_EMIT told(QString("%1: %2").arg(asked->name, error));
    }
    m_asked.erase(asked);
    if (m_asked.isEmpty())
        Q_EMIT ready(m_found);
}

/// All else desks open themselves.
void RelayList::add(const QString& id, const SourceAddress& address, bool isSmall)
{
    if (address.location().startsWith("rtsp"))
        m_found.insert(RelayAccess::path(id, isSmall), address);
}
