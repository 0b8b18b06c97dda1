#include "devicetree/DeviceRows.h"
#include "devicetree/DragPicture.h"
#include "devicetree/MyMimeData.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/Pixels.h"
#include "support/SignalLog.h"

#include <QDrag>
#include <QPainter>

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::MouseButtons)

class tst_devicetree : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void presses_data();
    void presses();
    void pressesSurviveDeletion_data();
    void pressesSurviveDeletion();
    void startsDrag_data();
    void startsDrag();
    void drawsPicture();
    void cutsLongText();
};

void tst_devicetree::presses_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QStringList>("signals_");
    QTest::newRow("left on a row") << "b" << Qt::LeftButton << "b" << QStringList();
    QTest::newRow("left on nothing") << "" << Qt::LeftButton << "a" << QStringList();
    QTest::newRow("right on a row") << "b" << Qt::RightButton << "b" << QStringList{"rightClicked(b)"};
    QTest::newRow("right on nothing") << "" << Qt::RightButton << "a" << QStringList{"sig_RclickAddGroup()"};
    QTest::newRow("middle on nothing") << "" << Qt::MiddleButton << "a" << QStringList();
}

void tst_devicetree::presses()
{
    QFETCH(QString, row);
    QFETCH(Qt::MouseButton, button);
    QFETCH(QString, current);
    QFETCH(QStringList, signals_);
    CDeviceTreeWidget tree;
    DeviceRows rows(&tree);
    rows.Add("a", 0);
    rows.Add("b", 0);
    tree.setCurrentItem(rows.At("a"));
    QStringList seen;
    connect(&tree, &CDeviceTreeWidget::rightClicked,
            [&](const QModelIndex& index) { seen.append("rightClicked(" + index.data().toString() + ")"); });
    connect(&tree, &CDeviceTreeWidget::sig_RclickAddGroup, [&] { seen.append("sig_RclickAddGroup()"); });
    Mouse::Press(tree.viewport(), rows.PointOn(row), button);
    QCOMPARE(seen, signals_);
    QCOMPARE(rows.NameOf(tree.currentItem()), current);
    QVERIFY(!tree.dragEnabled());
}

void tst_devicetree::pressesSurviveDeletion_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<QByteArray>("signal");
    QTest::newRow("pressed") << "a" << Qt::LeftButton
                             << QByteArray(SIGNAL(itemPressed(QTreeWidgetItem*,int)));
    QTest::newRow("right") << "a" << Qt::RightButton << QByteArray(SIGNAL(rightClicked(QModelIndex)));
    QTest::newRow("right on nothing") << "" << Qt::RightButton << QByteArray(SIGNAL(sig_RclickAddGroup()));
}

void tst_devicetree::pressesSurviveDeletion()
{
    QFETCH(QString, row);
    QFETCH(Qt::MouseButton, button);
    QFETCH(QByteArray, signal);
    auto* tree = new CDeviceTreeWidget;
    const QPointer<CDeviceTreeWidget> guard(tree);
    DeviceRows rows(tree);
    rows.Add("a", 0);
    SignalLog log;
    log.Watch(tree, signal);
    log.onSignal = [&](const QString&) { delete tree; };
    Mouse::Press(tree->viewport(), rows.PointOn(row), button);
    QCOMPARE(log.Entries().size(), 1);
    QVERIFY(!guard);
}

void tst_devicetree::startsDrag_data()
{
    QTest::addColumn<bool>("icon");
    QTest::addColumn<bool>("on");
    QTest::addColumn<int>("distance");
    QTest::addColumn<Qt::MouseButtons>("buttons");
    QTest::addColumn<bool>("starts");
    const Qt::MouseButtons left = Qt::LeftButton;
    const int far = QApplication::startDragDistance();
    QTest::newRow("far enough") << true << true << far << left << true;
    QTest::newRow("another button held too") << true << true << far << (left | Qt::RightButton) << true;
    QTest::newRow("a pixel short") << true << true << far - 1 << left << false;
    QTest::newRow("no icon") << false << true << far << left << false;
    QTest::newRow("switched off") << true << false << far << left << false;
    QTest::newRow("no button") << true << true << far << Qt::MouseButtons() << false;
}

// The offscreen platform gives a drag up as soon as it begins, which leaves the drag's object to look at.
void tst_devicetree::startsDrag()
{
    QFETCH(bool, icon);
    QFETCH(bool, on);
    QFETCH(int, distance);
    QFETCH(Qt::MouseButtons, buttons);
    QFETCH(bool, starts);
    CDeviceTreeWidget tree;
    DeviceRows rows(&tree);
    rows.Add("a", 0);
    if (!icon)
        rows.At("a")->setIcon(0, QIcon());
    tree.SetDragOn(on);
    Mouse::Press(tree.viewport(), rows.PointOn("a"));
    Mouse::Move(tree.viewport(), rows.PointOn("a") + QPoint(distance, 0), buttons);
    const auto* drag = tree.findChild<QDrag*>();
    QCOMPARE(drag != nullptr, starts);
    if (!drag)
        return;
    const auto* mime = static_cast<const MyMimeData*>(drag->mimeData());
    QCOMPARE(mime->text(), QString("0"));
    QVERIFY(mime->hasFormat("mydata") && mime->hasFormat("text/plain") && !mime->hasFormat("MyData"));
    QCOMPARE(mime->formats(), QStringList("text/plain"));
    QCOMPARE(mime->GetItem(), rows.At("a"));
    QCOMPARE(drag->hotSpot(), QPoint(12, 8));
    QCOMPARE(drag->pixmap().toImage(), DragPicture(*rows.At("a")).toImage());
}

void tst_devicetree::drawsPicture()
{
    QTreeWidgetItem item({"Gate"});
    QPixmap icon(16, 16);
    icon.fill(Qt::red);
    item.setIcon(0, icon);
    const QImage picture = DragPicture(item).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(picture.size(), QSize(116, 16));
    QCOMPARE(CountColor(picture.copy(0, 0, 16, 16), Qt::red), 16 * 16);
    const QImage text = picture.copy(16, 0, 54, 16);
    const auto isClear = [&](int x, int y) { return qAlpha(text.pixel(x, y)) == 0; };
    const auto isWhite = [&](int x, int y) { return (text.pixel(x, y) | 0xff000000) == 0xffffffff; };
    QCOMPARE(CountPixels(text, isClear) + CountPixels(text, isWhite), 54 * 16);
    QVERIFY(CountPixels(text, isWhite) > 20);
    QCOMPARE(CountColor(picture.copy(70, 0, 46, 16), QColor(0, 0, 0, 0)), 46 * 16);
}

// The text must stay in its rectangle, and long text begins like any other.
void tst_devicetree::cutsLongText()
{
    QTreeWidgetItem item({QString(400, 'M')});
    QTreeWidgetItem small({QString(5, 'M')});
    const QImage cut = DragPicture(item).toImage();
    QCOMPARE(cut.size(), QSize(116, 16));
    QCOMPARE(cut.copy(0, 0, 16, 16), DragPicture(QTreeWidgetItem()).toImage().copy(0, 0, 16, 16));
    QCOMPARE(cut.copy(16, 0, 30, 16), DragPicture(small).toImage().copy(16, 0, 30, 16));
}

QTEST_MAIN(tst_devicetree)

#include "tst_devicetree.moc"
