#include "devicetree/DeviceRows.h"
#include "devicetree/DragPicture.h"
#include "devicetree/MyMimeData.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/Pixels.h"
#include "support/SignalLog.h"

#include <QDrag>
#include <QPainter>

class tst_devicetree : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void presses();
    void pressesSurviveDeletion();
    void startsDrag();
    void drawsPicture();
    void cutsLongText();

private:
    void CompareDrag(const QDrag& drag, QTreeWidgetItem* row);
};

void tst_devicetree::presses()
{
    const std::tuple<const char*, Qt::MouseButton, const char*> presses[] = {{"b", Qt::LeftButton, ""},
                                                                             {"", Qt::LeftButton, ""},
                                                                             {"b", Qt::RightButton, "row b"},
                                                                             {"", Qt::RightButton, "no row"},
                                                                             {"", Qt::MiddleButton, ""}};
    for (const auto& [row, button, expected] : presses) {
        CDeviceTreeWidget tree;
        DeviceRows rows(&tree);
        rows.Add("a", 0);
        rows.Add("b", 0);
        tree.setCurrentItem(rows.At("a"));
        QString seen;
        connect(&tree, &CDeviceTreeWidget::rightClicked,
                [&](const QModelIndex& index) { seen += "row " + index.data().toString(); });
        connect(&tree, &CDeviceTreeWidget::sig_RclickAddGroup, [&] { seen += "no row"; });
        Mouse::Press(tree.viewport(), rows.PointOn(row), button);
        QCOMPARE(seen, QString(expected));
        QCOMPARE(rows.NameOf(tree.currentItem()), QString(*row ? row : "a"));
        QVERIFY(!tree.dragEnabled());
    }
}

void tst_devicetree::pressesSurviveDeletion()
{
    const std::tuple<const char*, Qt::MouseButton, const char*> presses[] = {
        {"a", Qt::LeftButton, SIGNAL(itemPressed(QTreeWidgetItem*,int))},
         {"a", Qt::RightButton, SIGNAL(rightClicked(QModelIndex))},
          {"", Qt::RightButton, SIGNAL(sig_RclickAddGroup())}};
    for (const auto& [row, button, signal] : presses) {
        const QPointer<CDeviceTreeWidget> tree(new CDeviceTreeWidget);
        DeviceRows rows(tree);
        rows.Add("a", 0);
        SignalLog log;
        log.Watch(tree, signal);
        log.onSignal = [&](const QString&) { delete tree; };
        Mouse::Press(tree->viewport(), rows.PointOn(row), button);
        QCOMPARE(log.Entries().size(), 1);
        QVERIFY(!tree);
    }
}

// The offscreen platform gives a drag up as soon as it begins, which leaves the drag's object to look at.
void tst_devicetree::startsDrag()
{
    struct
    {
        const char* name;
        bool icon, on;
        int distance;
        Qt::MouseButtons buttons;
        bool starts;
    } const moves[] = {
        {"far enough", true, true, 0, Qt::LeftButton, true},
        {"another button held too", true, true, 0, Qt::LeftButton | Qt::RightButton, true},
        {"a pixel short", true, true, -1, Qt::LeftButton, false},
        {"no icon", false, true, 0, Qt::LeftButton, false},
        {"switched off", true, false, 0, Qt::LeftButton, false},
        {"no button", true, true, 0, Qt::NoButton, false},
    };
    for (const auto& move : moves) {
        CDeviceTreeWidget tree;
        DeviceRows rows(&tree);
        rows.Add("a", 0);
        if (!move.icon)
            rows.At("a")->setIcon(0, QIcon());
        tree.SetDragOn(move.on);
        const QPoint by(QApplication::startDragDistance() + move.distance, 0);
        Mouse::Press(tree.viewport(), rows.PointOn("a"));
        Mouse::Move(tree.viewport(), rows.PointOn("a") + by, move.buttons);
        const auto* drag = tree.findChild<QDrag*>();
        QVERIFY2((drag != nullptr) == move.starts, move.name);
        if (drag)
            CompareDrag(*drag, rows.At("a"));
    }
}

void tst_devicetree::CompareDrag(const QDrag& drag, QTreeWidgetItem* row)
{
    const auto* mime = static_cast<const MyMimeData*>(drag.mimeData());
    QCOMPARE(mime->text(), QString("0"));
    QVERIFY(mime->hasFormat("mydata") && mime->hasFormat("text/plain") && !mime->hasFormat("MyData"));
    QCOMPARE(mime->formats(), QStringList("text/plain"));
    QCOMPARE(mime->GetItem(), row);
    QCOMPARE(drag.hotSpot(), QPoint(12, 8));
    QCOMPARE(drag.pixmap().toImage(), DragPicture(*row).toImage());
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
