#include "cameras/CameraList.h"

#include "cameras/CameraFile.h"
#include "cameras/CameraPasswords.h"
#include "common/EngineText.h"
#include "common/Words.h"

#include <algorithm>

namespace {

constexpr const char* SiteNames[] = {"North gate", "Warehouse", "Platform", "Offices"};
constexpr int CamerasPerSite = 16;

/// A name of before stays that of the recordings, and a new one takes over no other camera's.
void settleArchiveNames(QVector<CameraDescription>& cameras, const CameraList& before)
{
    QSet<QString> taken;
    for (CameraDescription& camera : cameras) {
        if (const CameraRecord* record = before.byId(camera.id)) {
            camera.recordedAs = record->about.archiveName();
            taken.insert(camera.recordedAs);
        }
    }
    for (CameraDescription& camera : cameras) {
        if (before.byId(camera.id))
            continue;
        const QString wanted = camera.archiveName();
        camera.recordedAs = wanted;
        for (int i = 2; taken.contains(camera.recordedAs); ++i)
            camera.recordedAs = QString("%1 (%2)").arg(wanted).arg(i);
        taken.insert(camera.recordedAs);
    }
}

} // namespace

QString whyNoAddress(const CameraRecord& camera)
{
    if (camera.address)
        return QString();
    if (!camera.about.isEnabled)
        return word("This camera is switched off");
    QString error;
    camera.about.address(QString(), &error);
    return error.isEmpty() ? word("Waiting for the password ...") : engineText(error);
}

bool isSynthetic(const CameraRecord& camera)
{
    return camera.address && camera.address->kind() == SourceAddress::Kind::Synthetic;
}

bool isSameStream(const CameraRecord& one, const CameraRecord& other)
{
    if (!one.address || !other.address)
        return !one.address && !other.address;
    return one.address->isSameStream(*other.address);
}

CameraList::CameraList(QObject* parent) : QObject(parent) {}

CameraList::~CameraList() = default;

QVector<CameraDescription> CameraList::syntheticCameras(int count)
{
    QVector<CameraDescription> cameras;
    for (int i = 0; i < count; ++i) {
        CameraDescription about;
        about.id = QString("synthetic:%1").arg(i + 1);
        about.name = SourceAddress::synthetic(i + 1).name();
        about.group = word("Synthetic cameras") + '/' + word(SiteNames[(i / CamerasPerSite) % 4]);
        about.mainUrl = about.id;
        cameras.append(about);
    }
    return cameras;
}

void CameraList::addSynthetic(int count)
{
    for (const CameraDescription& about : syntheticCameras(count))
        addToTrial(about);
}

void CameraList::add(const SourceAddress& address)
{
    CameraDescription about;
    about.id = "source:" + address.name();
    about.name = address.name();
    about.group = word("Sources") + '/' + word("Command line");
    about.mainUrl = address.url();
    about.smallUrl = address.smallUrl();
    const Login login = takeLogin(&about.mainUrl);
    const Login smallLogin = takeLogin(&about.smallUrl);
    about.user = login.user.isEmpty() ? smallLogin.user : login.user;
    m_passwords.insert(about.id, login.user.isEmpty() ? smallLogin.password : login.password);
    addToTrial(about);
}

void CameraList::addToTrial(CameraDescription about)
{
    about.recordedAs = about.name;
    m_records.push_back(recordOf(about));
    m_cameras.push_back(&m_records.back());
}

bool CameraList::keepIn(const QString& path, QString* error)
{
    const auto file = std::make_shared<CameraFile>(path);
    keepBy({}, path);
    const bool exists = file->exists();
    const auto cameras = exists ? file->read(error) : std::nullopt;
    if (exists)
        takeKept(cameras.value_or(QVector<CameraDescription>()));
    m_keep = [file](const QVector<CameraDescription>& news, QString* fault) {
        return file->write(news, fault);
    };
    return !exists || cameras.has_value();
}

void CameraList::keepBy(Keeper keep, const QString& path)
{
    m_keep = std::move(keep);
    m_store = std::make_unique<CameraPasswords>(CameraPasswords::pathBeside(path));
    connect(m_store.get(), &CameraPasswords::found, this, &CameraList::takePassword);
    connect(m_store.get(), &CameraPasswords::failed, this, &CameraList::troubled);
}

void CameraList::setRights(std::function<bool(const QString& id)> mayChange)
{
    m_mayChange = std::move(mayChange);
    Q_EMIT rightsChanged();
}

/// Without its password a camera would lock its user out.
void CameraList::takeKept(const QVector<CameraDescription>& cameras)
{
    QSet<QString> ids;
    for (const CameraDescription& camera : cameras) {
        if (!camera.user.isEmpty() && !m_passwords.contains(camera.id))
            ids.insert(camera.id);
    }
    m_waiting += ids;
    apply(cameras);
    m_store->look(ids.values());
}

void CameraList::takePassword(const QString& id, const QString& password)
{
    // A new one may have been given while the keyring looked for the old one.
    if (!m_waiting.remove(id))
        return;
    m_passwords.insert(id, password);
    for (CameraRecord* camera : m_cameras) {
        if (camera->about.id == id)
            Q_EMIT changed(camera, std::exchange(*camera, recordOf(camera->about)));
    }
}

void CameraList::keepPasswords(const QHash<QString, QString>& passwords)
{
    for (auto it = passwords.cbegin(); it != passwords.cend(); ++it) {
        m_waiting.remove(it.key());
        m_passwords.insert(it.key(), it.value());
        if (m_store)
            m_store->keep(it.key(), it.value());
    }
}

CameraRecord CameraList::recordOf(const CameraDescription& about) const
{
    CameraRecord record;
    record.name = about.name;
    if (!m_waiting.contains(about.id))
        record.address = about.address(m_passwords.value(about.id));
    record.group = about.group.section('/', 0, 0).trimmed();
    record.site = about.group.section('/', 1).trimmed();
    record.about = about;
    return record;
}

const CameraRecord* CameraList::find(const QString& name) const
{
    const auto isIt = [&name](const CameraRecord* camera) { return camera->name == name; };
    const auto found = std::find_if(m_cameras.begin(), m_cameras.end(), isIt);
    return found == m_cameras.end() ? nullptr : *found;
}

const CameraRecord* CameraList::byId(const QString& id) const
{
    const auto isIt = [&id](const CameraRecord* camera) { return camera->about.id == id; };
    const auto found = std::find_if(m_cameras.begin(), m_cameras.end(), isIt);
    return found == m_cameras.end() ? nullptr : *found;
}

const CameraRecord* CameraList::byArchiveName(const QString& name) const
{
    const auto isIt = [&name](const CameraRecord* camera) { return camera->about.archiveName() == name; };
    const auto found = std::find_if(m_cameras.begin(), m_cameras.end(), isIt);
    return found == m_cameras.end() ? nullptr : *found;
}

QVector<CameraDescription> CameraList::descriptions() const
{
    QVector<CameraDescription> all;
    for (const CameraRecord* camera : m_cameras)
        all.append(camera->about);
    return all;
}

bool CameraList::setDescriptions(QVector<CameraDescription> cameras, QString* error,
                                 const QHash<QString, QString>& passwords)
{
    settleArchiveNames(cameras, *this);
    *error = faultOf(cameras);
    if (!error->isEmpty() || (m_keep && !m_keep(cameras, error)))
        return false;
    keepPasswords(passwords);
    forgetPasswords(cameras);
    apply(cameras);
    return true;
}

/// Only of what is removed here: what is missing in a list of others' may come back.
void CameraList::forgetPasswords(const QVector<CameraDescription>& cameras)
{
    QHash<QString, QString> gone;
    for (const CameraRecord* camera : m_cameras) {
        if (!camera->about.user.isEmpty())
            gone.insert(camera->about.id, QString());
    }
    for (const CameraDescription& camera : cameras)
        gone.remove(camera.id);
    keepPasswords(gone);
}

void CameraList::apply(const QVector<CameraDescription>& cameras)
{
    drop(cameras);
    // Whoever hears of one camera finds the list whole.
    const auto news = take(cameras);
    for (const auto& one : news) {
        if (one.second.about.id.isEmpty())
            Q_EMIT added(one.first);
        else
            Q_EMIT changed(one.first, one.second);
    }
    Q_EMIT sorted();
}

/// The records that are new or changed, and what they were.
QVector<QPair<CameraRecord*, CameraRecord>> CameraList::take(const QVector<CameraDescription>& cameras)
{
    QHash<QString, CameraRecord*> before;
    for (CameraRecord* camera : std::exchange(m_cameras, {}))
        before.insert(camera->about.id, camera);
    QVector<QPair<CameraRecord*, CameraRecord>> news;
    for (const CameraDescription& about : cameras) {
        CameraRecord* record = before.value(about.id);
        if (!record)
            record = &m_records.emplace_back();
        m_cameras.push_back(record);
        CameraRecord next = recordOf(about);
        if (record->about != about || !isSameStream(*record, next))
            news.append({record, std::exchange(*record, std::move(next))});
    }
    return news;
}

/// Lets those go that the new list lacks.
void CameraList::drop(const QVector<CameraDescription>& cameras)
{
    const auto stays = [&cameras](const CameraRecord* camera) {
        return std::any_of(cameras.begin(), cameras.end(),
                           [&](const CameraDescription& other) { return other.id == camera->about.id; });
    };
    const std::vector<CameraRecord*> before = m_cameras;
    for (CameraRecord* camera : before) {
        if (stays(camera))
            continue;
        Q_EMIT aboutToBeRemoved(camera);
        m_cameras.erase(std::find(m_cameras.begin(), m_cameras.end(), camera));
        Q_EMIT removed(camera);
    }
}
