#include "FleetDuty.h"

#include "Recorder.h"
#include "RecorderOptions.h"
#include "fleet/FleetSchema.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <QTimerEvent>

namespace {

constexpr int PatienceMs = 5000;

} // namespace

FleetDuty::FleetDuty(const FleetAddress& address, const RecorderOptions& options, Recorder* recorder,
                     RecordedList* list)
    : m_address(address), m_self{{}, options.name, options.site, options.url, options.live},
      m_archiveDir(options.archiveDir), m_list(list)
{
    connect(recorder, &Recorder::recording, this, &FleetDuty::noteRecording);
    connect(recorder, &Recorder::stalled, this, &FleetDuty::noteStalled);
}

void FleetDuty::begin()
{
    m_self.id = archiveId(m_archiveDir);
    if (m_self.id.isEmpty()) {
        tell("can't keep this recorder's number in " + m_archiveDir);
        return;
    }
    m_link = std::make_unique<FleetLink>(m_address, m_self, m_archiveDir + "/index.sqlite");
    connect(m_link.get(), &FleetLink::camerasChanged, this, &FleetDuty::takeCameras);
    connect(m_link.get(), &FleetLink::troubled, this, [this](const QString& reason) {
        tell(reason.isEmpty() ? "the shared index takes all again" : "the shared index: " + reason);
    });
    connect(m_link.get(), &FleetLink::told, this, &tell);
    m_patience.start(PatienceMs, this);
}

void FleetDuty::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_patience.timerId())
        return;
    m_patience.stop();
    const QVector<LeasedCamera> cameras = kept();
    if (cameras.isEmpty())
        return;
    tell("the shared index does not answer: the cameras of the last time are recorded");
    takeCameras(cameras);
}

void FleetDuty::takeCameras(const QVector<LeasedCamera>& cameras)
{
    m_patience.stop();
    QVector<CameraDescription> known;
    for (const LeasedCamera& leased : cameras) {
        if (const std::optional<CameraDescription> camera = descriptionOf(leased))
            known.append(*camera);
        else
            tell(leased.name + " is not recorded: its description can't be understood");
    }
    keep(cameras);
    m_list->take(known);
}

void FleetDuty::noteRecording(const QString& name)
{
    const QString id = m_list->idOf(name);
    if (m_link && !id.isEmpty())
        m_link->setReady(id);
}

void FleetDuty::noteStalled(const QStringList& names, bool isDiskInDoubt)
{
    QStringList ids;
    for (const QString& name : names) {
        if (!m_list->idOf(name).isEmpty())
            ids.append(m_list->idOf(name));
    }
    if (m_link)
        m_link->setStalled(ids, isDiskInDoubt);
}

QString FleetDuty::keptPath() const
{
    return m_archiveDir + "/cameras.json";
}

void FleetDuty::keep(const QVector<LeasedCamera>& cameras) const
{
    QJsonArray list;
    for (const LeasedCamera& camera : cameras)
        list.append(QJsonArray{camera.id, camera.name, camera.description});
    QSaveFile file(keptPath());
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(list).toJson()) < 0 || !file.commit())
        tell("can't keep the list of cameras in " + keptPath());
}

QVector<LeasedCamera> FleetDuty::kept() const
{
    constexpr qint64 Most = 64 << 20;
    QFile file(keptPath());
    QVector<LeasedCamera> cameras;
    if (!file.open(QIODevice::ReadOnly))
        return cameras;
    const QJsonArray list = QJsonDocument::fromJson(file.read(Most)).array();
    for (const QJsonValue& value : list) {
        const QJsonArray camera = value.toArray();
        cameras.append({camera.at(0).toString(), camera.at(1).toString(), camera.at(2).toString()});
    }
    return cameras;
}

int migrateIndex(const FleetAddress& address)
{
    FleetDatabase database(address);
    const FleetSchema::State state =
        database.open() ? FleetSchema::migrate(database) : FleetSchema::State::Failed;
    if (state == FleetSchema::State::Newer)
        tell("the shared index was made by a newer version");
    else if (state == FleetSchema::State::Failed)
        tell("the shared index: " + database.reason());
    else
        tell(QString("the shared index is of version %1").arg(FleetSchema::Version));
    return state == FleetSchema::State::Current ? 0 : 1;
}
