#include "common/PlaceWriter.h"

#include <QApplication>
#include <QHash>
#include <QSaveFile>
#include <QTabBar>
#include <QTextStream>
#include <QTimerEvent>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>

namespace {

/// What a tab is called while its text counts something besides.
QString nameOf(const QTabBar& bar, int tab)
{
    const QString name = bar.tabData(tab).toString();
    return name.isEmpty() ? bar.tabText(tab) : name;
}

constexpr int SettleMs = 50;

class Places
{
public:
    explicit Places(QTextStream& stream) : m_stream(stream) {}

    void addTree(QWidget* root)
    {
        add(root->objectName(), QRect(root->mapToGlobal(QPoint()), root->size()));
        addRows(qobject_cast<QTreeWidget*>(root));
        addTabs(qobject_cast<QTabBar*>(root));
        for (QObject* child : root->children()) {
            auto* widget = qobject_cast<QWidget*>(child);
            if (widget && widget->isVisible() && !widget->isWindow())
                addTree(widget);
        }
    }

private:
    void add(const QString& name, const QRect& place)
    {
        if (name.isEmpty() || name.startsWith("qt_"))
            return;
        const int earlier = m_seen[name]++;
        m_stream << name << (earlier > 0 ? QString("#%1").arg(earlier) : QString()) << '\t' << place.x()
                 << '\t' << place.y() << '\t' << place.width() << '\t' << place.height() << '\n';
    }

    void addRows(QTreeWidget* tree)
    {
        if (!tree)
            return;
        for (QTreeWidgetItemIterator it(tree); *it; ++it) {
            const QRect place = tree->visualItemRect(*it);
            if (place.isValid() && tree->viewport()->rect().contains(place.center()))
                add((*it)->text(0), QRect(tree->viewport()->mapToGlobal(place.topLeft()), place.size()));
        }
    }

    void addTabs(QTabBar* bar)
    {
        for (int i = 0; bar && i < bar->count(); ++i) {
            const QRect place = bar->tabRect(i);
            add("tab " + nameOf(*bar, i), QRect(bar->mapToGlobal(place.topLeft()), place.size()));
        }
    }

    QTextStream& m_stream;
    QHash<QString, int> m_seen;
};

bool changesPlaces(QEvent::Type type)
{
    return type == QEvent::Show || type == QEvent::Hide || type == QEvent::Move || type == QEvent::Resize;
}

} // namespace

PlaceWriter::PlaceWriter(const QString& path, QObject* parent) : QObject(parent), m_path(path)
{
    qApp->installEventFilter(this);
    m_timer.start(SettleMs, this);
}

bool PlaceWriter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched->isWidgetType() && changesPlaces(event->type()))
        m_timer.start(SettleMs, this);
    return QObject::eventFilter(watched, event);
}

void PlaceWriter::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    m_timer.stop();
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    QString text;
    QTextStream stream(&text);
    Places places(stream);
    QWidgetList windows = QApplication::topLevelWidgets();
    std::stable_partition(windows.begin(), windows.end(),
                          [this](QWidget* window) { return window == parent(); });
    for (QWidget* window : windows) {
        if (window->isVisible())
            places.addTree(window);
    }
    file.write(text.toUtf8());
    file.commit();
}
