#include "devicetree/MyMimeData.h"
#include "panes/QMyLabel.h"
#include "support/DeckTestCase.h"
#include "support/SignalLog.h"

#include <QDrag>
#include <QTimer>
#include <QTreeWidgetItem>

/// What the label does with the events of a drag. Only a drag that runs has a source, and the minimal
/// platform can run one without a display.
class tst_label_drag : public DeckTestCase
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_QPA_PLATFORM", "minimal"); }

private Q_SLOTS:
    void init();
    void cleanup();
    void takesARow();
    void setsTheActionOnTheWayOnly();
    void refuses_data();
    void refuses();
    void ignoresDragsFromElsewhere();
    void labelGoesInTheDrop();

private:
    void During(QMimeData* mime, const std::function<void()>& act);
    MyMimeData* Row(const QString& text);
    void LetIn();

    QWidget* m_pWindow = nullptr;
    QPointer<QMyLabel> m_pLabel;
    QTreeWidgetItem m_item;
    int m_nRecord = 2;
};

void tst_label_drag::init()
{
    DeckTestCase::init();
    m_pWindow = new QWidget;
    m_pWindow->resize(200, 200);
    m_pLabel = new QMyLabel(m_pWindow);
    m_pLabel->resize(200, 200);
    m_pWindow->show();
    m_item.setData(0, 33, reinterpret_cast<qlonglong>(&m_nRecord));
}

void tst_label_drag::cleanup()
{
    delete m_pWindow;
    DeckTestCase::cleanup();
}

MyMimeData* tst_label_drag::Row(const QString& text)
{
    auto* mime = new MyMimeData;
    mime->setText(text);
    mime->SetItem(&m_item);
    return mime;
}

void tst_label_drag::During(QMimeData* mime, const std::function<void()>& act)
{
    QObject source;
    auto* drag = new QDrag(&source);
    drag->setMimeData(mime);
    bool ran = false;
    QTimer::singleShot(0, this, [&] {
        ran = true;
        act();
        QDrag::cancel();
    });
    drag->exec(Qt::MoveAction);
    QVERIFY2(ran, "the drag did not run");
}

/// Qt hands moves and drops only to a widget that has let the drag in.
void tst_label_drag::LetIn()
{
    const QScopedPointer<MyMimeData> mime(Row("0"));
    QDragEnterEvent enter(QPoint(), Qt::MoveAction, mime.data(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pLabel, &enter);
    QVERIFY(enter.isAccepted());
}

void tst_label_drag::takesARow()
{
    SignalLog log;
    log.WatchAll(m_pLabel);
    QWindow* window = m_pWindow->windowHandle();
    During(Row("0"), [&] {
        QTest::mouseMove(window, QPoint(20, 20));
        QTest::mouseMove(window, QPoint(50, 50));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
    });
    QCOMPARE(log.Take(), QStringList("sig_DragEvent(pointer)"));
}

void tst_label_drag::setsTheActionOnTheWayOnly()
{
    constexpr Qt::DropActions both = Qt::CopyAction | Qt::MoveAction;
    MyMimeData* mime = Row("0");
    During(mime, [&] {
        LetIn();
        QDragMoveEvent move(QPoint(), both, mime, Qt::LeftButton, Qt::NoModifier);
        move.setDropAction(Qt::CopyAction);
        QApplication::sendEvent(m_pLabel, &move);
        QVERIFY(move.isAccepted());
        QCOMPARE(move.dropAction(), Qt::MoveAction);
        for (const bool accepted : {false, true}) {
            LetIn();
            QDropEvent drop(QPoint(), both, mime, Qt::LeftButton, Qt::NoModifier);
            drop.setDropAction(Qt::CopyAction);
            drop.setAccepted(accepted);
            QApplication::sendEvent(m_pLabel, &drop);
            QCOMPARE(drop.isAccepted(), accepted);
            QCOMPARE(drop.dropAction(), Qt::CopyAction);
        }
    });
}

void tst_label_drag::refuses_data()
{
    QTest::addColumn<QString>("fault");
    for (const char* fault : {"no row", "text of another kind", "area", "plain data with the text of a row"})
        QTest::newRow(fault) << fault;
}

/// A move comes accepted if the one before it was, so it must be refused, not just left alone.
void tst_label_drag::refuses()
{
    QFETCH(QString, fault);
    const QScopedPointer<MyMimeData> row(Row(fault == "text of another kind" ? "2" : "0"));
    int area = 1;
    QTreeWidgetItem areaItem;
    areaItem.setData(0, 33, reinterpret_cast<qlonglong>(&area));
    if (fault == "no row")
        row->SetItem(nullptr);
    if (fault == "area")
        row->SetItem(&areaItem);
    QMimeData plain;
    plain.setText("0");
    const QMimeData* mime = fault.startsWith("plain") ? &plain : row.data();
    SignalLog log;
    log.WatchAll(m_pLabel);
    During(Row("0"), [&] {
        QDragEnterEvent enter(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pLabel, &enter);
        QVERIFY(!enter.isAccepted());
        LetIn();
        QDragMoveEvent move(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        move.accept();
        QApplication::sendEvent(m_pLabel, &move);
        QVERIFY(!move.isAccepted());
        LetIn();
        QDropEvent drop(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pLabel, &drop);
    });
    QCOMPARE(log.Take(), QStringList());
}

void tst_label_drag::ignoresDragsFromElsewhere()
{
    SignalLog log;
    log.WatchAll(m_pLabel);
    const QScopedPointer<MyMimeData> mime(Row("0"));
    QDragEnterEvent enter(QPoint(), Qt::MoveAction, mime.data(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pLabel, &enter);
    QVERIFY(!enter.isAccepted());
    QDropEvent drop(QPoint(), Qt::MoveAction, mime.data(), Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_pLabel, &drop);
    QCOMPARE(log.Take(), QStringList());
}

void tst_label_drag::labelGoesInTheDrop()
{
    connect(m_pLabel, &QMyLabel::sig_DragEvent, [this] { delete m_pLabel; });
    QWindow* window = m_pWindow->windowHandle();
    During(Row("0"), [&] {
        QTest::mouseMove(window, QPoint(20, 20));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    });
    QVERIFY(!m_pLabel);
}

QTEST_MAIN(tst_label_drag)

#include "tst_label_drag.moc"
