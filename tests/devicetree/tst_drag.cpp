#include "devicetree/DeviceRows.h"
#include "devicetree/MyMimeData.h"
#include "panes/QMyLabel.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QDrag>
#include <QTimer>

#include <functional>

namespace {

/// On the left row of pixels of a widget, and copying is what it means unless told otherwise.
template <class Event> struct Made : Event
{
    explicit Made(const QMimeData* mime, const QPoint& at = QPoint())
        : Event(at, Qt::CopyAction | Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier)
    {
        this->setDropAction(Qt::CopyAction);
    }
};

} // namespace

/// Drags that run for real, nested event loop and all, from the pointer's first move to the drop.
class tst_drag : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void dropsOnPane();
    void paneSetsTheActionOnTheWayOnly();
    void paneRefuses();
    void paneGoesInTheDrop();
    void regroups_data();
    void regroups();
    void judges_data();
    void judges();
    void takesPlainDataForNothing();
    void rowGoesDuringDrag_data();
    void rowGoesDuringDrag();
    void treeGoesDuringDrag();
    void moveAtTheDropStartsNoOtherDrag();

private:
    void Drag(const QString& row, const std::function<void()>& during, const QPoint& to);
    void LetIn(QWidget* widget);
    QPoint InWindow(const QString& row) const;

    /// Lets a test set what the application's own tree for another kind of drag would set.
    struct Tree : CDeviceTreeWidget
    {
        using CDeviceTreeWidget::CDeviceTreeWidget;
        void SetDragText(const QString& text) { m_strDragText = text; }
    };

    QWidget* m_pWindow = nullptr;
    QPointer<Tree> m_pTree;
    QPointer<QMyLabel> m_pLabel;
    DeviceRows* m_pRows = nullptr;
};

void tst_drag::init()
{
    DeckTestCase::init();
    m_pWindow = new QWidget;
    m_pWindow->setGeometry(20, 20, 400, 400);
    m_pTree = new Tree(m_pWindow);
    m_pTree->setGeometry(0, 0, 200, 400);
    m_pLabel = new QMyLabel(m_pWindow);
    m_pLabel->setGeometry(200, 0, 200, 400);
    m_pRows = new DeviceRows(m_pTree);
    for (const QString& group : {QString("A"), QString("B")}) {
        m_pRows->Add(group, 0);
        m_pRows->Add("area" + group, 1, group);
        m_pRows->Add("camera" + group, 2, "area" + group);
    }
    m_pRows->Add("stray area", 1);
    m_pRows->Add("stray camera", 2);
    m_pRows->AddWithoutRecord("bare");
    m_pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pWindow));
}

void tst_drag::cleanup()
{
    delete m_pWindow;
    delete m_pRows;
    DeckTestCase::cleanup();
}

QPoint tst_drag::InWindow(const QString& row) const
{
    return m_pTree->viewport()->mapTo(m_pWindow, m_pRows->PointOn(row));
}

void tst_drag::Drag(const QString& row, const std::function<void()>& during, const QPoint& to)
{
    QWindow* window = m_pWindow->windowHandle();
    bool ran = false;
    QTimer::singleShot(0, m_pWindow, [&] {
        ran = true;
        QTest::mouseMove(window, to - QPoint(3, 0));
        during();
        QTest::mouseMove(window, to);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, to);
    });
    QWidget* viewport = m_pTree->viewport();
    const QPoint from = m_pRows->PointOn(row);
    Mouse::Press(viewport, from);
    Mouse::Move(viewport, from + QPoint(40, 0), Qt::LeftButton);
    QVERIFY2(ran, "the drag did not run");
}

void tst_drag::dropsOnPane()
{
    QTreeWidgetItem* dropped = nullptr;
    connect(m_pLabel, &QMyLabel::sig_DragEvent, [&](QTreeWidgetItem* item) { dropped = item; });
    Drag(
        "areaA", [] {}, QPoint(300, 100));
    QVERIFY(!dropped);
    Drag(
        "cameraA", [] {}, QPoint(300, 100));
    QCOMPARE(m_pRows->NameOf(dropped), QString("cameraA"));
}

/// Qt hands moves and drops only to a widget that has let the drag in.
void tst_drag::LetIn(QWidget* widget)
{
    MyMimeData mime;
    mime.setText("0");
    mime.SetItem(m_pRows->At("cameraA"));
    Made<QDragEnterEvent> enter(&mime, m_pRows->PointOn("A"));
    QApplication::sendEvent(widget, &enter);
}

// While a drag runs, events made by hand come from it.
void tst_drag::paneSetsTheActionOnTheWayOnly()
{
    MyMimeData mime;
    mime.setText("0");
    mime.SetItem(m_pRows->At("cameraA"));
    Made<QDragMoveEvent> move(&mime);
    Made<QDropEvent> drop(&mime);
    drop.ignore();
    const auto send = [&] {
        for (QDropEvent* event : QVector<QDropEvent*>{&move, &drop}) {
            LetIn(m_pLabel);
            QApplication::sendEvent(m_pLabel, event);
        }
    };
    Drag("cameraA", send, QPoint(100, 390));
    QVERIFY(move.isAccepted() && move.dropAction() == Qt::MoveAction);
    QVERIFY(!drop.isAccepted() && drop.dropAction() == Qt::CopyAction);
}

/// A move comes accepted if the one before it was, so it must be refused, not just left alone.
void tst_drag::paneRefuses()
{
    MyMimeData rows[4];
    const std::pair<const char*, QTreeWidgetItem*> contents[] = {{"0", m_pRows->At("cameraA")},
                                                                 {"0", nullptr},
                                                                 {"2", m_pRows->At("cameraA")},
                                                                 {"0", m_pRows->At("areaA")}};
    QMimeData plain;
    plain.setText("0");
    QVector<QMimeData*> refused = {&plain};
    for (int i = 0; i < 4; ++i) {
        rows[i].setText(contents[i].first);
        rows[i].SetItem(contents[i].second);
        refused.append(&rows[i]);
    }
    SignalLog log;
    log.WatchAll(m_pLabel);
    const auto judge = [&](QMimeData* mime) {
        Made<QDragEnterEvent> enter(mime);
        Made<QDragMoveEvent> move(mime);
        Made<QDropEvent> drop(mime);
        for (QDropEvent* event : QVector<QDropEvent*>{&enter, &move, &drop}) {
            LetIn(m_pLabel);
            event->setAccepted(event == &move);
            QApplication::sendEvent(m_pLabel, event);
        }
        return !enter.isAccepted() && !move.isAccepted();
    };
    const auto judgeAll = [&] {
        for (QMimeData* mime : qAsConst(refused))
            QCOMPARE(judge(mime), mime != &rows[0]);
        QCOMPARE(log.Take(), QStringList("sig_DragEvent(pointer)"));
    };
    Drag("cameraA", judgeAll, QPoint(100, 390));
    Made<QDragEnterEvent> fromElsewhere(&rows[0]);
    QApplication::sendEvent(m_pLabel, &fromElsewhere);
    QVERIFY(!fromElsewhere.isAccepted());
}

void tst_drag::paneGoesInTheDrop()
{
    connect(m_pLabel, &QMyLabel::sig_DragEvent, [this] { delete m_pLabel; });
    Drag(
        "cameraA", [] {}, QPoint(300, 100));
    QVERIFY(!m_pLabel);
}

void tst_drag::regroups_data()
{
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("node");
    const auto row = [](const char* name, const char* dragged, const char* target, const char* node) {
        QTest::newRow(name) << dragged << target << node;
    };
    row("on a row two levels down", "areaA", "cameraB", "B");
    row("on a row one level down", "areaA", "areaB", "B");
    row("on a node", "areaA", "B", "B");
    row("on a child of its own node", "areaA", "cameraA", "A");
    row("node on another node", "A", "cameraB", "B");
    row("node on itself", "A", "A", "");
    row("node on its own grandchild", "A", "cameraA", "");
    row("camera", "cameraA", "B", "");
    row("no record dragged", "bare", "B", "");
    row("no record at the target", "areaA", "bare", "");
    row("no node above an area", "areaA", "stray area", "");
    row("no node above a camera", "areaA", "stray camera", "");
    row("on the empty area", "areaA", "", "");
}

void tst_drag::regroups()
{
    QFETCH(QString, dragged);
    QFETCH(QString, target);
    QFETCH(QString, node);
    QStringList drops;
    connect(m_pTree, &CDeviceTreeWidget::sig_drop, [&](QTreeWidgetItem* child, QTreeWidgetItem* father) {
        drops.append(m_pRows->NameOf(child) + " to " + m_pRows->NameOf(father));
    });
    Drag(
        dragged, [] {}, InWindow(target));
    QCOMPARE(drops, node.isEmpty() ? QStringList() : QStringList(dragged + " to " + node));
    QCOMPARE(m_pTree->topLevelItemCount(), 5);
    QCOMPARE(m_pRows->At("areaA")->parent(), m_pRows->At("A"));
}

void tst_drag::judges_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("dropOff");
    QTest::addColumn<bool>("moves");
    QTest::addColumn<bool>("drops");
    const auto row = [](const char* name, const char* target, const char* text, bool dropOff, bool moves,
                        bool drops) { QTest::newRow(name) << target << text << dropOff << moves << drops; };
    row("on a row", "B", "0", false, true, true);
    row("on the empty area", "", "0", false, false, true);
    row("text of another kind", "B", "2", false, false, false);
    row("no text", "B", "", false, false, false);
    row("drops disabled", "B", "0", true, false, false);
}

void tst_drag::judges()
{
    QFETCH(QString, target);
    QFETCH(QString, text);
    QFETCH(bool, dropOff);
    QFETCH(bool, moves);
    QFETCH(bool, drops);
    if (dropOff)
        m_pTree->DisableDrop();
    MyMimeData mime;
    mime.setText(text);
    const QPoint at = m_pRows->PointOn(target);
    Made<QDragEnterEvent> enter(&mime, at);
    Made<QDragMoveEvent> move(&mime, at);
    Made<QDropEvent> drop(&mime, at);
    const QVector<QDropEvent*> events = {&enter, &move, &drop};
    const auto send = [&] {
        for (QDropEvent* event : events) {
            LetIn(m_pTree->viewport());
            event->setDropAction(Qt::CopyAction);
            event->ignore();
            QApplication::sendEvent(m_pTree->viewport(), event);
        }
    };
    Drag("areaA", send, QPoint(300, 100));
    for (const QDropEvent* event : events) {
        const bool accepted = event == &drop ? drops : moves;
        QCOMPARE(event->isAccepted(), accepted);
        QCOMPARE(event->dropAction(), accepted ? Qt::MoveAction : Qt::CopyAction);
    }
    send();
    for (const QDropEvent* event : events)
        QVERIFY2(!event->isAccepted(), "an event without a source");
}

// A view may put any mime data into a drag of its own; its text alone does not make it a row.
void tst_drag::takesPlainDataForNothing()
{
    SignalLog log;
    log.WatchAll(m_pTree);
    QMimeData mime;
    mime.setText("0");
    Made<QDropEvent> drop(&mime, m_pRows->PointOn("B"));
    const auto send = [&] {
        LetIn(m_pTree->viewport());
        QApplication::sendEvent(m_pTree->viewport(), &drop);
    };
    Drag("areaA", send, QPoint(300, 100));
    QVERIFY(drop.isAccepted());
    QCOMPARE(log.Take(), QStringList());
}

void tst_drag::rowGoesDuringDrag_data()
{
    QTest::addColumn<QString>("dying");
    QTest::addColumn<bool>("onPane");
    for (const char* dying : {"dragged row", "A", "stray camera", "all rows"}) {
        QTest::addRow("%s, drop on pane", dying) << dying << true;
        QTest::addRow("%s, drop on tree", dying) << dying << false;
    }
}

void tst_drag::rowGoesDuringDrag()
{
    QFETCH(QString, dying);
    QFETCH(bool, onPane);
    const QString dragged = onPane ? "cameraA" : "areaA";
    const QPoint to = onPane ? QPoint(300, 100) : InWindow("A");
    SignalLog log;
    log.Watch(m_pTree, SIGNAL(sig_drop(QTreeWidgetItem*,QTreeWidgetItem*)));
    log.Watch(m_pLabel, SIGNAL(sig_DragEvent(QTreeWidgetItem*)));
    const auto act = [&] {
        if (dying == "all rows")
            m_pTree->clear();
        else
            delete m_pRows->At(dying == "dragged row" ? dragged : dying);
    };
    Drag(dragged, act, to);
    QCOMPARE(log.Take().size(), dying == "stray camera" ? 1 : 0);
}

void tst_drag::treeGoesDuringDrag()
{
    SignalLog log;
    log.WatchAll(m_pLabel);
    Drag(
        "cameraA", [&] { delete m_pTree; }, QPoint(300, 100));
    QVERIFY(!m_pTree);
    QCOMPARE(log.Take(), QStringList());
}

void tst_drag::moveAtTheDropStartsNoOtherDrag()
{
    int moves = 0;
    connect(m_pLabel, &QMyLabel::sig_DragEvent, [&] {
        ++moves;
        Mouse::Move(m_pTree->viewport(), m_pRows->PointOn("B"), Qt::LeftButton);
    });
    Drag(
        "cameraA", [] {}, QPoint(300, 100));
    QCOMPARE(moves, 1);
}

QTEST_MAIN(tst_drag)

#include "tst_drag.moc"
