#include "alarms/AlarmCenter.h"

#include "alarms/DesktopNotice.h"
#include "archive/ArchiveIndex.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "cameras/OnvifHub.h"
#include "common/Words.h"
#include "source/VideoSource.h"

#include <QDateTime>
#include <QTimer>

namespace {

/// The start belongs to the pictures that are seen.
constexpr int BeginMs = 2000;

} // namespace

AlarmCenter::AlarmCenter(const CameraList& cameras, CameraHub* hub, ClientArchive* archive, bool isTrial)
    : m_cameras(cameras), m_hub(hub), m_archive(archive), m_isTrial(isTrial),
      m_notice(new DesktopNotice(this))
{
    QTimer::singleShot(BeginMs, this, &AlarmCenter::begin);
    listen();
}

AlarmCenter::~AlarmCenter()
{
    // What is in the recordings ends with them, and who shows the book has gone.
    m_book.disconnect();
    for (const CameraRecord* camera : m_watched.keys())
        unwatch(camera);
}

void AlarmCenter::begin()
{
    m_hasBegun = true;
    connect(&m_cameras, &CameraList::added, this, &AlarmCenter::watchAll);
    connect(&m_cameras, &CameraList::changed, this, &AlarmCenter::cameraChanged);
    connect(&m_cameras, &CameraList::aboutToBeRemoved, this, &AlarmCenter::unwatch);
    connect(&m_cameras, &CameraList::removed, this, &AlarmCenter::watchAll);
    watchAll();
}

void AlarmCenter::listen()
{
    connect(m_hub->onvif(), &OnvifHub::motionChanged, this,
            [this](const CameraRecord* camera, bool on) { hear(camera, Witness::Motion, on); });
    connect(m_hub->onvif(), &OnvifHub::alarmChanged, this,
            [this](const CameraRecord* camera, bool on) { hear(camera, Witness::Input, on); });
}

void AlarmCenter::hear(const CameraRecord* camera, Witness witness, bool on)
{
    if (on && !m_rules.isOn(camera->about.id))
        return;
    int& witnesses = m_witnesses[camera];
    witnesses = on ? witnesses | int(witness) : witnesses & ~int(witness);
    note(*camera, witnesses != 0);
}

void AlarmCenter::setRules(const AlarmRules& rules)
{
    m_rules = rules;
    m_rules.save();
    if (m_hasBegun)
        watchAll();
}

QVector<const CameraRecord*> AlarmCenter::wanted() const
{
    QVector<const CameraRecord*> cameras;
    if (m_isTold)
        return cameras;
    int synthetics = 0;
    for (int i = 0; i < m_cameras.count(); ++i) {
        const CameraRecord& camera = m_cameras.at(i);
        const bool isLeftOut = isSynthetic(camera) && synthetics++ >= WatchedSynthetics;
        if (!isLeftOut && camera.address && m_rules.isOn(camera.about.id))
            cameras.append(&camera);
    }
    return cameras;
}

void AlarmCenter::watchAll()
{
    const QVector<const CameraRecord*> cameras = wanted();
    for (const CameraRecord* camera : m_watched.keys()) {
        if (!cameras.contains(camera))
            unwatch(camera);
    }
    for (const CameraRecord* camera : cameras)
        watch(camera);
}

void AlarmCenter::watch(const CameraRecord* camera)
{
    if (m_watched.contains(camera))
        return;
    const QSharedPointer<VideoSource> source = m_hub->acquire(*camera, StreamKind::Small);
    if (!source)
        return;
    connect(source.data(), &VideoSource::motionChanged, this,
            [this, camera](bool motion) { hear(camera, Witness::Picture, motion); });
    source->setMotionDetection(true);
    m_watched.insert(camera, source);
    // Others may have looked before.
    if (source->hasMotion())
        hear(camera, Witness::Picture, true);
}

void AlarmCenter::unwatch(const CameraRecord* camera)
{
    const QSharedPointer<VideoSource> source = m_watched.take(camera);
    if (!source)
        return;
    source->disconnect(this);
    source->setMotionDetection(false);
    m_witnesses.remove(camera);
    note(*camera, false);
}

void AlarmCenter::cameraChanged(const CameraRecord* camera, const CameraRecord& before)
{
    if (!isSameStream(*camera, before))
        unwatch(camera);
    watchAll();
}

void AlarmCenter::note(const CameraRecord& camera, bool on)
{
    m_archive->setAlarm(camera.name, on);
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (on)
        noteTold(camera, now);
    else
        m_book.end(camera.about.id, now);
}

void AlarmCenter::noteTold(const CameraRecord& camera, qint64 startMs)
{
    if (!m_rules.isOn(camera.about.id) || !m_book.begin(camera.about.id, camera.name, startMs))
        return;
    tell(camera);
    Q_EMIT raised(&camera);
}

void AlarmCenter::notePast(const CameraRecord& camera, const Span& span)
{
    if (m_rules.isOn(camera.about.id))
        m_book.addPast(camera.about.id, camera.name, span.startMs, span.endMs);
}

void AlarmCenter::tell(const CameraRecord& camera)
{
    if (m_isTrial || isSynthetic(camera) || m_rules.isQuiet(QTime::currentTime()))
        return;
    if (m_rules.hasSound)
        m_tone.play();
    if (m_rules.hasNotice)
        m_notice->show(word("Alarm"),
                       word("%1, motion %2").arg(camera.name, QTime::currentTime().toString()));
}
