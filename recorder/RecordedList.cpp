#include "RecordedList.h"

#include "Recorder.h"
#include "RecorderOptions.h"

#include <QFileInfo>

RecordedList::RecordedList(const RecorderOptions& options)
    : m_passwordsPath(options.passwordsPath),
      m_store(new CameraPasswords(options.passwordsPath, this, options.wherePasswordsAre()))
{
    m_passwordsTime = passwordsTime();
    connect(m_store, &CameraPasswords::found, this, &RecordedList::takePassword);
    connect(m_store, &CameraPasswords::failed, this, &tell);
}

QDateTime RecordedList::passwordsTime() const
{
    return QFileInfo(m_passwordsPath).lastModified();
}

void RecordedList::refresh()
{
    if (passwordsTime() != m_passwordsTime)
        take(QVector<CameraDescription>(m_cameras));
}

void RecordedList::take(const QVector<CameraDescription>& cameras)
{
    m_cameras = cameras;
    m_passwordsTime = passwordsTime();
    m_asked.clear();
    m_found.clear();
    m_ids.clear();
    for (const CameraDescription& camera : cameras) {
        if (camera.isEnabled && camera.recording != CameraDescription::Recording::Never)
            m_asked.insert(camera.id, camera);
    }
    if (m_asked.isEmpty())
        Q_EMIT ready({});
    m_store->look(m_asked.keys());
}

void RecordedList::takePassword(const QString& id, const QString& password)
{
    const auto asked = m_asked.constFind(id);
    if (asked == m_asked.constEnd())
        return;
    const CameraDescription camera = *asked;
    m_asked.erase(asked);
    QString error = "another camera has its name";
    const std::optional<SourceAddress> address = camera.address(password, &error);
    if (address && !m_ids.contains(camera.archiveName())) {
        m_found.append({camera.archiveName(),
                        *address,
                        {camera.sensitivity, camera.zones},
                        camera.recording == CameraDescription::Recording::OnMotion});
        m_ids.insert(camera.archiveName(), id);
    } else {
        tell(QString("%1 is not recorded: %2").arg(camera.name, error));
    }
    if (m_asked.isEmpty())
        Q_EMIT ready(m_found);
}
