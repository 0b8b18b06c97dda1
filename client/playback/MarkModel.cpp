#include "playback/MarkModel.h"

#include "cameras/ClientArchive.h"
#include "common/Words.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace {

/// Motion that stops for no longer goes on.
constexpr qint64 FlickerMs = 5000;
/// Of so many pictures an operator sees but a part at a time.
constexpr int KeptPictures = 200;
constexpr int MostRequests = 24;
constexpr qint64 IntoMs = 1000;

/// A moment at which there is something to see.
qint64 pictureMoment(const Span& span)
{
    return span.startMs + qMin(IntoMs, (span.endMs - span.startMs) / 2);
}

QPixmap plain()
{
    QPixmap pixmap(MarkModel::PictureSize);
    pixmap.fill(QGuiApplication::palette().color(QPalette::Mid));
    return pixmap;
}

/// Motion raises an alarm, which then tells of both. `marks` are those of one camera from the first on,
/// alarms last.
void joinWithAlarms(QVector<MarkModel::Mark>& marks, int first)
{
    using Mark = MarkModel::Mark;
    const auto isMotion = [](const Mark& mark) { return mark.span.kind == Span::Motion; };
    const auto alarms = std::find_if_not(marks.begin() + first, marks.end(), isMotion);
    const auto isJoined = [&](const Mark& motion) {
        const Span& joined = motion.span;
        const auto isBefore = [](const Mark& alarm, qint64 ms) { return alarm.span.startMs < ms; };
        const auto alarm = std::lower_bound(alarms, marks.end(), joined.startMs - FlickerMs, isBefore);
        if (alarm == marks.end() || alarm->span.startMs > joined.startMs + FlickerMs)
            return false;
        alarm->span.startMs = qMin(alarm->span.startMs, joined.startMs);
        alarm->span.endMs = qMax(alarm->span.endMs, joined.endMs);
        return true;
    };
    marks.erase(std::remove_if(marks.begin() + first, alarms, isJoined), alarms);
}

} // namespace

bool MarkModel::Mark::operator==(const Mark& other) const
{
    return camera == other.camera && pane == other.pane && span.kind == other.span.kind &&
           span.startMs == other.span.startMs && span.endMs == other.span.endMs;
}

MarkModel::MarkModel(const DayRows* rows, const ClientArchive* archive, QObject* parent)
    : QAbstractListModel(parent), m_rows(rows), m_archive(archive),
      m_maker(archive->readerMaker(), PictureSize, MostRequests), m_pictures(KeptPictures),
      m_placeholder(plain())
{
    connect(rows, &DayRows::rowsChanged, this, &MarkModel::takeRows);
    connect(rows, &DayRows::contentChanged, this, &MarkModel::takeRows);
    connect(&m_maker, &KeyPictures::made, this, &MarkModel::takePicture);
}

int MarkModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_marks.size();
}

QVariant MarkModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    const Mark& mark = m_marks[index.row()];
    if (role == Qt::DecorationRole)
        return pictureOf(mark);
    return role == Qt::DisplayRole ? textOf(mark) : QVariant();
}

QString MarkModel::textOf(const Mark& mark)
{
    const QString time = QDateTime::fromMSecsSinceEpoch(mark.span.startMs).toString("HH:mm:ss");
    const qint64 seconds = qMax(qint64(1), (mark.span.endMs - mark.span.startMs) / 1000);
    const QString kind = mark.span.kind == Span::Alarm ? word("Alarm, %1 s") : word("Motion, %1 s");
    return QStringList{time, mark.camera.simplified(), kind.arg(seconds)}.join('\n');
}

QVector<MarkModel::Mark> MarkModel::marksOf(const QVector<DayRow>& rows)
{
    QVector<Mark> marks;
    for (const DayRow& row : rows) {
        const int rowFirst = marks.size();
        for (const Span::Kind kind : {Span::Motion, Span::Alarm}) {
            const int first = marks.size();
            for (const Span& span : row.marks) {
                if (span.kind != kind)
                    continue;
                if (marks.size() > first && span.startMs - marks.last().span.endMs < FlickerMs)
                    marks.last().span.endMs = qMax(marks.last().span.endMs, span.endMs);
                else
                    marks.append({row.camera, row.pane, span});
            }
        }
        joinWithAlarms(marks, rowFirst);
    }
    std::stable_sort(marks.begin(), marks.end(), [](const Mark& one, const Mark& other) {
        return one.span.startMs < other.span.startMs;
    });
    return marks;
}

void MarkModel::takeRows()
{
    forgetMissing();
    QVector<Mark> marks = marksOf(m_rows->rows());
    if (marks == m_marks)
        return;
    beginResetModel();
    m_marks.swap(marks);
    endResetModel();
}

/// What was still being written may be a recording now.
void MarkModel::forgetMissing()
{
    const auto missing = std::exchange(m_missing, {});
    for (const auto& picture : missing)
        m_pictures.remove(picture);
    if (!missing.isEmpty() && !m_marks.isEmpty())
        Q_EMIT dataChanged(index(0), index(m_marks.size() - 1), {Qt::DecorationRole});
}

QPixmap MarkModel::pictureOf(const Mark& mark) const
{
    const QString key = m_archive->keyOf(mark.camera);
    const qint64 ms = pictureMoment(mark.span);
    if (const QPixmap* known = m_pictures.object({key, ms}))
        return *known;
    m_maker.ask(key, ms);
    return m_placeholder;
}

void MarkModel::takePicture(const QString& key, qint64 ms, const QImage& picture)
{
    auto* pixmap = new QPixmap(m_placeholder);
    if (picture.isNull())
        m_missing.append({key, ms});
    // Whatever the picture's shape, the text beside it begins where all others do.
    QRect place(QPoint(), picture.size());
    place.moveCenter(pixmap->rect().center());
    QPainter(pixmap).drawImage(place, picture);
    m_pictures.insert({key, ms}, pixmap);
    for (int row = 0; row < m_marks.size(); ++row) {
        if (pictureMoment(m_marks[row].span) == ms && m_archive->keyOf(m_marks[row].camera) == key)
            Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole});
    }
}
