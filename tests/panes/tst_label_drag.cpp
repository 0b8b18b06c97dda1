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
    void setsTheActionOnTheWayOnly();
    void refuses();
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

/// A move comes accepted if the one before it was, so it must be refused, not just left alone.
void tst_label_drag::refuses()
{
    const QScopedPointer<MyMimeData> row(Row("0")), noRow(Row("0")), otherText(Row("2")), areaRow(Row("0"));
    int area = 1;
    QTreeWidgetItem areaItem;
    areaItem.setData(0, 33, reinterpret_cast<qlonglong>(&area));
    noRow->SetItem(nullptr);
    areaRow->SetItem(&areaItem);
    QMimeData plain;
    plain.setText("0");
    SignalLog log;
    log.WatchAll(m_pLabel);
    const auto isLetIn = [&](const QMimeData* mime) {
        QDragEnterEvent enter(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pLabel, &enter);
        return enter.isAccepted();
    };
    const auto drop = [&](const QMimeData* mime) {
        QDropEvent drop(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pLabel, &drop);
    };
    for (const QMimeData* mime :
         {static_cast<QMimeData*>(noRow.data()), static_cast<QMimeData*>(otherText.data()),
          static_cast<QMimeData*>(areaRow.data()), &plain}) {
        During(Row("0"), [&] {
            QVERIFY(!isLetIn(mime));
            LetIn();
            QDragMoveEvent move(QPoint(), Qt::MoveAction, mime, Qt::LeftButton, Qt::NoModifier);
            move.accept();
            QApplication::sendEvent(m_pLabel, &move);
            QVERIFY(!move.isAccepted());
            LetIn();
            drop(mime);
        });
    }
    QVERIFY2(!isLetIn(row.data()), "a drag from elsewhere");
    drop(row.data());
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
