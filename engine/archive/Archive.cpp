#include "archive/Archive.h"

#include "archive/ArchiveRecovery.h"
#include "archive/DiskRoom.h"
#include "archive/IndexFile.h"
#include "archive/SafeFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace {

constexpr int OldestAtOnce = 64;
constexpr qint64 DayMs = 86'400'000;

} // namespace

Archive::Archive(const QString& directory, Probe probe, Telling telling)
    : m_paths(std::make_shared<ArchivePaths>(directory)), m_probe(std::move(probe))
{
    m_index.setSpooled(telling == Telling::Spooled);
}

Archive::~Archive() = default;

bool Archive::openSound(QString* error)
{
    return m_index.open(m_paths->directory(), error) && m_index.isSound();
}

bool Archive::open(QString* error)
{
    close();
    bool isOpen = openSound(error);
    const ArchiveIndex::Result result = m_index.result();
    const bool contradictsItself = m_index.isOpen() && result == ArchiveIndex::Result::Done;
    if (!isOpen && (contradictsItself || result == ArchiveIndex::Result::Damaged))
        return remakeDamaged(error);
    if (!isOpen) {
        m_index.close();
        return false;
    }
    m_totalBytes = m_index.totalBytes();
    m_recovery = std::make_unique<ArchiveRecovery>(*this);
    return true;
}

bool Archive::remakeDamaged(QString* error)
{
    const QString line = "the archive's index was damaged and is made anew";
    m_told.remove(line);
    trouble(line);
    return remake(error);
}

bool Archive::remake(QString* error)
{
    close();
    const QString aside = IndexFile::asideName(m_paths->index());
    if (!IndexFile::setAside(m_paths->index()) || !openSound(error)) {
        m_index.close();
        return false;
    }
    if (QFile::exists(aside))
        m_index.takeSpans(aside);
    m_recovery = std::make_unique<ArchiveRecovery>(*this);
    return true;
}

void Archive::close()
{
    m_recovery.reset();
    m_index.close();
    m_oldest.clear();
    m_totalBytes = 0;
}

bool Archive::recoverSome()
{
    if (!m_recovery)
        return false;
    const bool goesOn = m_recovery->step();
    if (!goesOn) {
        m_recovery.reset();
        change({}, [](ArchiveIndex& index) { return index.noteWhole(); });
        flush();
    }
    return goesOn;
}

void Archive::change(const QString& camera, Change change)
{
    m_changes.push_back(std::move(change));
    if (!camera.isNull() && !m_changed.contains(camera))
        m_changed.append(camera);
}

ArchiveIndex::Result Archive::flush()
{
    if (m_changes.empty() || !m_index.isOpen())
        return ArchiveIndex::Result::Done;
    if (m_index.begin() && !(applyChanges() && m_index.commit()))
        m_index.rollBack();
    if (m_index.result() == ArchiveIndex::Result::Done)
        m_changes.clear();
    return m_index.result();
}

bool Archive::applyChanges()
{
    return std::all_of(m_changes.begin(), m_changes.end(),
                       [this](const Change& one) { return one(m_index); });
}

QStringList Archive::takeChanged()
{
    return m_changes.empty() ? std::exchange(m_changed, {}) : QStringList();
}

QStringList Archive::takeTroubles()
{
    return std::exchange(m_troubles, {});
}

void Archive::trouble(const QString& line)
{
    if (m_told.contains(line))
        return;
    m_told.insert(line);
    m_troubles.append(line);
}

void Archive::finish(const FinishedPart& part)
{
    const RecordedName name{part.camera, part.startMs, part.isSample, true};
    const bool isWhole = part.isWhole && part.endMs > part.startMs && QFileInfo(part.path).size() > 0;
    const QString path = ArchivePaths::wholePath(part.path);
    if (!isWhole)
        takeFile(part.path, name);
    else if (rename(part.path, path))
        add({m_paths->relative(path), part.camera, part.startMs, part.endMs, QFileInfo(path).size(),
             part.isSample});
    m_paths->endPart(part.path);
    m_youngest.emplace_back(m_paths->relative(path), Clock::now());
    flush();
}

bool Archive::rename(const QString& partPath, const QString& path)
{
    QString error;
    const bool isRenamed = renameSafely(partPath, path, &error);
    if (!error.isEmpty())
        trouble(error);
    return isRenamed;
}

/// Indexes a file as far as it was written. True if it is known then.
bool Archive::takeFile(const QString& path, const RecordedName& name)
{
    const SegmentContent content = m_probe(path);
    if (content.kind == SegmentContent::Unreadable)
        trouble(QString("cannot read %1: %2").arg(path, content.reason));
    if (content.kind == SegmentContent::Empty && name.isPart)
        QFile::remove(path);
    const QString whole = name.isPart ? ArchivePaths::wholePath(path) : path;
    if (content.kind != SegmentContent::Plays || (name.isPart && !rename(path, whole)))
        return false;
    // A file may say what it likes.
    add({m_paths->relative(whole), name.camera, name.startMs, name.startMs + qMin(content.durationMs, DayMs),
         QFileInfo(whole).size(), name.isSample});
    return true;
}

void Archive::add(const Segment& segment)
{
    m_totalBytes += segment.bytes;
    if (!m_oldest.empty() && segment.startMs < m_oldest.back().startMs)
        m_oldest.clear();
    change(segment.camera, [segment](ArchiveIndex& index) { return index.add(segment); });
}

void Archive::setSpans(const QVector<CameraSpan>& spans)
{
    for (const CameraSpan& one : spans)
        change(one.goesOn ? QString() : one.camera,
               [one](ArchiveIndex& index) { return index.addSpan(one.camera, one.span, one.isSample); });
    flush();
}

void Archive::erase(const Segment& segment)
{
    if (m_paths->isOwnFile(segment.path))
        QFile::remove(m_paths->full(segment.path));
    forget(segment);
}

void Archive::forget(const Segment& segment)
{
    m_totalBytes -= qBound<qint64>(0, segment.bytes, m_totalBytes);
    change(segment.camera, [segment](ArchiveIndex& index) { return index.remove(segment); });
}

int Archive::removeSample()
{
    const QVector<Segment> samples = m_index.samples();
    for (const Segment& segment : samples)
        erase(segment);
    change("", [](ArchiveIndex& index) { return index.removeSampleSpans(); });
    m_oldest.clear();
    flush();
    return samples.size();
}

void Archive::limit(const ArchiveLimits& limits, qint64 nowMs)
{
    while (!m_youngest.empty() && Clock::now() - m_youngest.front().second >= Protected)
        m_youngest.pop_front();
    const qint64 oldest = limits.days > 0 ? nowMs - limits.days * DayMs : std::numeric_limits<qint64>::min();
    std::deque<Segment> kept;
    while (std::optional<Segment> next = nextOldest()) {
        const DiskRoom room = DiskRoom::of(m_paths->directory());
        if (m_totalBytes <= limits.bytes && next->endMs >= oldest && !room.isShort())
            break;
        m_oldest.pop_front();
        if (isProtected(*next, room.isAllButFull() ? ProtectedAtLast : Protected))
            kept.push_back(*next);
        else
            erase(*next);
        if (m_oldest.empty() && !kept.empty())
            break;
    }
    m_oldest.insert(m_oldest.begin(), kept.begin(), kept.end());
    flush();
}

std::optional<Segment> Archive::nextOldest()
{
    if (m_oldest.empty() && m_index.isOpen() && flush() == ArchiveIndex::Result::Done) {
        const QVector<Segment> found = m_index.oldest(OldestAtOnce);
        m_oldest.assign(found.begin(), found.end());
    }
    return m_oldest.empty() ? std::nullopt : std::make_optional(m_oldest.front());
}

bool Archive::isProtected(const Segment& segment, std::chrono::seconds span) const
{
    return std::any_of(m_youngest.begin(), m_youngest.end(), [&](const auto& young) {
        return young.first == segment.path && Clock::now() - young.second < span;
    });
}
