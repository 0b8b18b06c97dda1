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
    Q_EMIT changed();
    return true;
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
    const int index = indexOf(name);
    return index < 0 ? nullptr : &m_kept.views[index];
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
    if (index < 0 || name == newName)
        return index >= 0;
    *error = find(newName) ? word("there is a view of this name already") : faultOf(newName);
    Kept next = m_kept;
    next.views[index].name = newName;
    for (QString* role : {&next.last, &next.start})
        *role = *role == name ? newName : *role;
    return error->isEmpty() && write(next, error);
}

bool ViewList::remove(const QString& name, QString* error)
{
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
    if (index < 0 || to < 0 || to >= views().size())
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
