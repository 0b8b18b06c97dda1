#include "views/ViewList.h"

#include "common/Words.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace {

constexpr int Version = 1;
constexpr qint64 MostBytes = 4 << 20;
constexpr int MostViews = 200;
constexpr int MostWindows = 16;

template <class View> bool takeAll(const QJsonValue& json, int most, QVector<View>* views)
{
    const QJsonArray array = json.toArray();
    if (!json.isArray() || array.size() > most)
        return false;
    for (const QJsonValue& one : array) {
        View view;
        if (!view.fromJson(one.toObject()))
            return false;
        views->append(view);
    }
    return true;
}

template <class View> QJsonArray jsonOf(const QVector<View>& views)
{
    QJsonArray array;
    for (const View& view : views)
        array.append(view.toJson());
    return array;
}

bool haveNames(const QVector<DeckView>& views)
{
    QSet<QString> names;
    for (const DeckView& view : views)
        names.insert(view.name);
    return names.size() == views.size() && !names.contains(QString());
}

} // namespace

ViewList::ViewList(const QString& path, QObject* parent) : QObject(parent), m_path(path) {}

QString ViewList::userPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/views.json";
}

bool ViewList::read(QString* error)
{
    const QFileInfo about(m_path);
    m_wasKept = about.exists();
    if (!m_wasKept)
        return true;
    QFile file(m_path);
    const bool isReadable = about.isFile() && about.size() <= MostBytes && file.open(QIODevice::ReadOnly);
    m_isRefused = !isReadable || !take(file.readAll());
    if (m_isRefused)
        *error = word("the views in %1 can't be understood").arg(m_path);
    gather();
    Q_EMIT changed();
    return !m_isRefused;
}

bool ViewList::take(const QByteArray& text)
{
    const QJsonObject json = QJsonDocument::fromJson(text).object();
    Kept kept;
    if (json["version"].toInt() != Version || !takeAll(json["views"], MostViews, &kept.views) ||
        !takeAll(json["windows"], MostWindows, &kept.windows) || !haveNames(kept.views))
        return false;
    kept.last = json["last"].toString();
    kept.start = json["start"].toString();
    m_kept = kept;
    return true;
}

bool ViewList::write(const Kept& next, QString* error)
{
    const QJsonObject json{{"version", Version},
                           {"last", next.last},
                           {"start", next.start},
                           {"views", jsonOf(next.views)},
                           {"windows", jsonOf(next.windows)}};
    const QByteArray text = QJsonDocument(json).toJson();
    QDir().mkpath(QFileInfo(m_path).path());
    QSaveFile file(m_path);
    if (m_isRefused || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size() ||
        !file.commit()) {
        *error = word("can't write %1").arg(m_path);
        return false;
    }
    m_kept = next;
    gather();
    Q_EMIT changed();
    return true;
}

void ViewList::gather()
{
    m_all = m_kept.views;
    m_sharedNames.clear();
    for (DeckView view : qAsConst(m_shared)) {
        const QString name = view.name;
        while (find(view.name))
            view.name = word("%1 (shared)").arg(view.name);
        m_sharedNames.insert(view.name, name);
        m_all.append(view);
    }
}

void ViewList::setShared(const QVector<DeckView>& views)
{
    if (m_shared == views)
        return;
    m_shared = views;
    gather();
    Q_EMIT changed();
}

void ViewList::setSharing(bool may)
{
    if (std::exchange(m_mayShare, may) != may)
        Q_EMIT changed();
}

bool ViewList::setShared(const QString& name, bool shared, QString* error)
{
    const DeckView* found = find(name);
    if (!found || isShared(name) == shared)
        return true;
    const DeckView view = *found;
    Kept next = m_kept;
    if (!shared) {
        // Rather twice for a moment than nowhere.
        const Kept before = m_kept;
        next.views.append(view);
        if (!write(next, error))
            return false;
        if (m_sharer(m_sharedNames.value(name, name), nullptr, error))
            return true;
        QString second;
        write(before, &second);
        return false;
    }
    if (m_sharedNames.values().contains(name)) {
        *error = word("there is a view of this name already");
        return false;
    }
    next.views.removeAt(indexOf(name));
    return m_sharer(QString(), &view, error) && write(next, error);
}

int ViewList::indexOf(const QString& name) const
{
    for (int i = 0; i < m_kept.views.size(); ++i) {
        if (m_kept.views[i].name == name)
            return i;
    }
    return -1;
}

const DeckView* ViewList::find(const QString& name) const
{
    const auto isIt = [&name](const DeckView& view) { return view.name == name; };
    const auto found = std::find_if(m_all.cbegin(), m_all.cend(), isIt);
    return found == m_all.cend() ? nullptr : &*found;
}

QString ViewList::faultOf(const QString& name)
{
    if (name.trimmed().isEmpty() || name != name.trimmed())
        return word("a view needs a name");
    return name.size() > DeckView::MostLetters ? word("the name is too long") : QString();
}

QString ViewList::newName() const
{
    int number = 1;
    while (find(word("View %1").arg(number)))
        ++number;
    return word("View %1").arg(number);
}

bool ViewList::keep(const DeckView& view, QString* error)
{
    if (isShared(view.name)) {
        DeckView kept = view;
        kept.name = m_sharedNames.value(view.name);
        return m_sharer(kept.name, &kept, error);
    }
    *error = faultOf(view.name);
    Kept next = m_kept;
    const int index = indexOf(view.name);
    if (index < 0)
        next.views.append(view);
    else
        next.views[index] = view;
    if (next.views.size() > MostViews)
        *error = word("there are too many views");
    return error->isEmpty() && write(next, error);
}

bool ViewList::rename(const QString& name, const QString& newName, QString* error)
{
    const int index = indexOf(name);
    if (!find(name) || name == newName)
        return find(name);
    *error = find(newName) ? word("there is a view of this name already") : faultOf(newName);
    if (isShared(name)) {
        DeckView renamed = *find(name);
        renamed.name = newName;
        return error->isEmpty() && m_sharer(m_sharedNames.value(name), &renamed, error);
    }
    Kept next = m_kept;
    next.views[index].name = newName;
    for (QString* role : {&next.last, &next.start})
        *role = *role == name ? newName : *role;
    return error->isEmpty() && write(next, error);
}

bool ViewList::remove(const QString& name, QString* error)
{
    if (isShared(name))
        return m_sharer(m_sharedNames.value(name), nullptr, error);
    const int index = indexOf(name);
    if (index < 0)
        return true;
    Kept next = m_kept;
    next.views.removeAt(index);
    for (QString* role : {&next.last, &next.start})
        *role = *role == name ? QString() : *role;
    return write(next, error);
}

bool ViewList::move(const QString& name, int by, QString* error)
{
    const int index = indexOf(name);
    const int to = index + by;
    if (index < 0 || to < 0 || to >= m_kept.views.size())
        return true;
    Kept next = m_kept;
    next.views.move(index, to);
    return write(next, error);
}

bool ViewList::setLast(const QString& name, QString* error)
{
    Kept next = m_kept;
    next.last = name;
    return name == last() || write(next, error);
}

bool ViewList::setStart(const QString& name, QString* error)
{
    Kept next = m_kept;
    next.start = name;
    return name == start() || write(next, error);
}

bool ViewList::setWindows(const QVector<WindowView>& windows, QString* error)
{
    Kept next = m_kept;
    next.windows = windows;
    return (windows.isEmpty() && m_kept.windows.isEmpty()) || write(next, error);
}
