#include "layouts/BuiltInLayouts.h"
#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitButton.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "layouts/CSplitWidget.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SeededGenerator.h"

#include <QLabel>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

namespace {

/// The dialog on a loaded catalog, with a mark in the place of the split file that a write would replace.
struct Opened
{
    Opened()
    {
        catalog->LoadLayouts();
        catalog->thumbnailSize = QSize(30, 30);
        dialog.reset(new CSegmentationDialog(nullptr));
        dialog->show();
        editor = dialog->findChild<CSplitWidget*>("SplitWidget");
        Mark();
    }

    void Mark() { installation.Write("Organization/SplitInfo.xml", "mark"); }

    bool HasWritten() const
    {
        QFile split(catalog->splitFilePath);
        return split.open(QIODevice::ReadOnly) && split.readAll() != "mark";
    }

    CSplitButton* Tab(int index) const
    {
        return dialog->findChild<CSplitButton*>(QString("tab%1").arg(index + 1));
    }
    QSpinBox* Box(const char* name) const { return dialog->findChild<QSpinBox*>(name); }
    QString TabText(int index) const { return Tab(index)->findChild<QLabel*>("label")->text(); }

    QImage TabPicture(int index) const
    {
        return Tab(index)->findChild<QToolButton*>("btnpic")->icon().pixmap(30, 30).toImage();
    }

    /// A click on the unit of a column line, in grid units.
    void ClickColumnLine(int line, int row) const
    {
        const QSize pitch = SplitEditor::Pitch(editor->m_matrix, editor->size());
        Mouse::Press(editor, QPoint(line * pitch.width(), row * pitch.height() + pitch.height() / 2));
    }

    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    QScopedPointer<CSegmentationDialog> dialog;
    CSplitWidget* editor = nullptr;

private:
    ExpectedWarning m_sheet{"Unknown color name '#transparent'"};
};

/// Runs `steps` inside the next modal dialog's event loop.
template <class Steps> void InsideDialog(Steps steps)
{
    QTimer::singleShot(0, qApp, [steps] {
        QVERIFY(QApplication::activeModalWidget());
        steps(QApplication::activeModalWidget());
    });
}

} // namespace

class tst_segmentation : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void opensWithoutWriting();
    void showsTabs();
    void editIsStored();
    void spinBoxResizes();
    void tabChangeStores();
    void failedWriteKeepsEdit();
    void goesByKeys();
    void incompleteLayoutStaysUntilEdited();
    void drag();
    void closeButtonEndsExec();
    void editButtonOpensDialog();
    void pickerDiesBehindDialog();
    void randomWalkIsStored();
};

void tst_segmentation::opensWithoutWriting()
{
    const ExpectedWarning sheet("Unknown color name '#transparent'");
    Installation installation;
    installation.Write("ResourcesBlank/Qss/dialogsheet.qss", "#close{image: url(.*?/x.png);}");
    CSplitCatalog::Instance()->LoadLayouts();
    CSegmentationDialog dialog(nullptr);
    QCOMPARE(dialog.styleSheet(), "#close{image: url(" + installation.Resources() + "/x.png);}");
    QCOMPARE(dialog.windowFlags(), Qt::Window | Qt::FramelessWindowHint | Qt::Tool);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(585, 437));
    QVERIFY(dialog.findChild<QWidget*>("widget_3")->isHidden());
    dialog.close();
    QVERIFY2(!QFile::exists(CSplitCatalog::Instance()->splitFilePath), "nothing was changed");
}

void tst_segmentation::showsTabs()
{
    const Opened opened;
    const int counts[] = {1, 4, 6, 8, 9, 16, 25, 36, 49, 64};
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(opened.TabText(i), QString::number(counts[i]));
        QCOMPARE(opened.TabPicture(i).pixelColor(0, 0), QColor(i == 0 ? "#dee2e5" : "#5c6576"));
        QVERIFY(opened.Tab(i)->styleSheet().startsWith(i == 0 ? "background-color:#e90202"
                                                              : "background-color:#222428"));
    }
    Mouse::Press(opened.Tab(3), QPoint(5, 5));
    QCOMPARE(opened.TabPicture(0).pixelColor(0, 0), QColor("#5c6576"));
    QCOMPARE(opened.TabPicture(3).pixelColor(0, 0), QColor("#dee2e5"));
    QCOMPARE(opened.TabPicture(3).pixelColor(22, 1), QColor("#aeaeae"));
    QCOMPARE(opened.Box("sbxRow")->value(), 4);
    QCOMPARE(opened.Box("sbxCol")->value(), 4);
}

void tst_segmentation::editIsStored()
{
    const Opened opened;
    opened.ClickColumnLine(2, 4);
    const SplitLayout cut{6, 6, 2, {{0, 0, 6, 2}, {0, 2, 6, 6}}};
    QVERIFY(opened.catalog->customLayouts[0] == cut);
    QCOMPARE(opened.TabText(0), QString("2"));
    QCOMPARE(opened.TabPicture(0).pixelColor(10, 20), QColor("#aeaeae"));
    QVERIFY(opened.HasWritten());
}

void tst_segmentation::spinBoxResizes()
{
    const Opened opened;
    opened.Box("sbxRow")->setValue(8);
    QCOMPARE(opened.TabText(0), QString("13"));
    QCOMPARE(opened.catalog->customLayouts[0].rows, 8);
    QVERIFY(opened.HasWritten());
    for (const char* name : {"sbxRow", "sbxCol"}) {
        opened.Box(name)->setValue(99);
        QCOMPARE(opened.Box(name)->value(), 8);
        opened.Box(name)->setValue(-5);
        QCOMPARE(opened.Box(name)->value(), 1);
    }
    QVERIFY(opened.catalog->customLayouts[0] == (SplitLayout{1, 1, 1, {{0, 0, 1, 1}}}));
}

void tst_segmentation::tabChangeStores()
{
    // The same tab, a tab of the same grid and one of another grid, which alone sets the spin boxes.
    for (int tab : {0, 2, 3}) {
        const Opened opened;
        SplitLayout turned = BuiltInLayout(tab);
        std::reverse(turned.cells.begin(), turned.cells.end());
        opened.catalog->customLayouts[tab] = turned;
        Mouse::Press(opened.Tab(tab), QPoint(5, 5));
        QCOMPARE(opened.HasWritten(), tab == 3);
        QVERIFY(opened.catalog->customLayouts[tab] == (tab == 3 ? BuiltInLayout(tab) : turned));
    }
}

void tst_segmentation::failedWriteKeepsEdit()
{
    const Opened opened;
    QVERIFY(QFile::remove(opened.catalog->splitFilePath));
    QVERIFY(QDir().mkpath(opened.catalog->splitFilePath));
    QSignalSpy edited(opened.dialog.data(), &CSegmentationDialog::sig_LayoutEdited);
    opened.ClickColumnLine(2, 4);
    QCOMPARE(opened.catalog->customLayouts[0].count, 2);
    QCOMPARE(opened.TabText(0), QString("2"));
    QCOMPARE(edited.takeFirst(), QVariantList({0, false}));
    QVERIFY(QDir().rmdir(opened.catalog->splitFilePath));
    opened.ClickColumnLine(2, 4);
    QCOMPARE(edited.takeFirst(), QVariantList({0, true}));
}

void tst_segmentation::goesByKeys()
{
    const Opened opened;
    QApplication::setActiveWindow(opened.dialog.data());
    const auto tabTo = [](const QWidget* target) {
        for (int i = 0; i < 20 && QApplication::focusWidget() != target; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        return QApplication::focusWidget() == target;
    };
    QVERIFY(tabTo(opened.Tab(1)->findChild<QWidget*>("btnpic")));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(QApplication::focusWidget()->accessibleDescription(), QString("selected"));
    const QImage before = opened.editor->grab().toImage();
    QVERIFY(tabTo(opened.editor));
    QVERIFY2(opened.editor->grab().toImage() != before, "the focus is seen");
    const int half = opened.editor->m_matrix.cols / 2;
    for (int i = 0; i < half; ++i)
        QTest::keyClick(opened.editor, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(opened.editor, Qt::Key_Space);
    QCOMPARE(opened.catalog->customLayouts[1].count, 3);
    QCOMPARE(opened.editor->accessibleDescription(), QString("row 1, column %1, Pane 1").arg(half + 1));
    QTest::keyClick(opened.editor, Qt::Key_Escape);
    QVERIFY(!opened.dialog->isVisible());
}

/// Two cells of which one covers the other, no cell at all, and a gap in the corner. The last click takes
/// away the line between the upper two cells.
void tst_segmentation::incompleteLayoutStaysUntilEdited()
{
    const std::tuple<SplitLayout, QPoint, QList<SplitCell>> rows[] = {
        {{2, 4, 2, {{0, 0, 2, 2}, {0, 0, 2, 1}}}, {3, 0}, {{0, 0, 2, 2}, {0, 2, 2, 3}, {0, 3, 2, 4}}},
        {{4, 8, 0, {}}, {3, 1}, {{0, 0, 4, 3}, {0, 3, 4, 8}}},
        {{2, 2, 3, {{1, 0, 2, 1}, {0, 1, 1, 2}, {0, 0, 1, 1}}},
         {1, 0},
         {{0, 0, 1, 2}, {1, 0, 2, 1}, {1, 1, 2, 2}}}};
    for (const auto& [layout, unit, cells] : rows) {
        const Opened opened;
        SplitLayout& stored = opened.catalog->customLayouts[1];
        stored = layout;
        Mouse::Press(opened.Tab(1), QPoint(5, 5));
        QCOMPARE(opened.TabText(1), QString::number(layout.count));
        QVERIFY(opened.HasWritten());
        opened.catalog->LoadLayouts();
        QVERIFY(stored == layout);
        opened.ClickColumnLine(unit.x(), unit.y());
        QVERIFY(stored == (SplitLayout{layout.rows, layout.cols, int(cells.size()), cells}));
    }
}

void tst_segmentation::drag()
{
    const Opened opened;
    QWidget* dialog = opened.dialog.data();
    // The last row of the strip, below it, and the right button.
    for (const auto& [y, button] :
         {std::pair(49, Qt::LeftButton), {50, Qt::LeftButton}, {10, Qt::RightButton}}) {
        const bool moves = y == 49;
        dialog->move(100, 80);
        Mouse::Press(dialog, QPoint(30, y), button);
        Mouse::Move(dialog, QPoint(70, y + 25), button);
        QCOMPARE(dialog->pos(), moves ? QPoint(140, 105) : QPoint(100, 80));
        Mouse::Release(dialog, QPoint(30, y), Qt::MiddleButton);
        Mouse::Move(dialog, QPoint(31, y), button);
        QCOMPARE(dialog->pos(), moves ? QPoint(141, 105) : QPoint(100, 80));
        Mouse::Release(dialog, QPoint(30, y), button);
        Mouse::Move(dialog, QPoint(0, 0));
        QCOMPARE(dialog->pos(), moves ? QPoint(141, 105) : QPoint(100, 80));
    }
}

void tst_segmentation::closeButtonEndsExec()
{
    const Opened opened;
    opened.dialog->hide();
    InsideDialog(
        [](QWidget* dialog) { Mouse::Click(dialog->findChild<QToolButton*>("close"), QPoint(5, 5)); });
    QCOMPARE(opened.dialog->exec(), int(QDialog::Rejected));
    QVERIFY(!opened.dialog->isVisible());
    QVERIFY(!opened.HasWritten());
}

void tst_segmentation::editButtonOpensDialog()
{
    const Opened opened;
    CSplitCustomDialog picker(nullptr);
    picker.show();
    const QToolButton* first = picker.findChild<QToolButton*>("btnC1");
    bool opensAlone = false;
    InsideDialog([&](QWidget* dialog) {
        opensAlone = qobject_cast<CSegmentationDialog*>(dialog) && !picker.isVisible();
        dialog->findChild<QSpinBox*>("sbxRow")->setValue(7);
        dialog->close();
    });
    Mouse::Click(picker.findChild<QToolButton*>("btnEditSplit"), QPoint(5, 5));
    QVERIFY(opensAlone);
    QVERIFY(!picker.isVisible());
    picker.show();
    const QImage expected = opened.catalog->LayoutThumbnail(1, 0, "#5c6576", "#eeeeee").toImage();
    QCOMPARE(first->icon().pixmap(30, 30).toImage(), expected);
    QCOMPARE(opened.catalog->customLayouts[0].count, 7);
}

void tst_segmentation::pickerDiesBehindDialog()
{
    const Opened opened;
    auto* picker = new CSplitCustomDialog(nullptr);
    const QPointer<QWidget> guard(picker);
    InsideDialog([&](QWidget* dialog) {
        delete picker;
        dialog->close();
    });
    Mouse::Click(picker->findChild<QToolButton*>("btnEditSplit"), QPoint(5, 5));
    QVERIFY(!guard);
}

void tst_segmentation::randomWalkIsStored()
{
    const Opened opened;
    QRandomGenerator random = SeededGenerator();
    for (int step = 0; step < 300; ++step) {
        if (random.bounded(8) == 0)
            Mouse::Press(opened.Tab(random.bounded(10)), QPoint(3, 3));
        else if (random.bounded(8) == 0)
            opened.Box(random.bounded(2) ? "sbxRow" : "sbxCol")->setValue(random.bounded(1, 9));
        else
            opened.ClickColumnLine(random.bounded(8), random.bounded(8));
        if (!opened.HasWritten())
            continue;
        SplitLayout edited[10];
        std::copy(std::begin(opened.catalog->customLayouts), std::end(opened.catalog->customLayouts), edited);
        opened.catalog->LoadLayouts();
        for (int i = 0; i < 10; ++i) {
            QVERIFY(opened.catalog->customLayouts[i] == edited[i]);
            QVERIFY(opened.catalog->normalLayouts[i] == BuiltInLayout(i));
        }
    }
    QVERIFY(opened.HasWritten());
}

QTEST_MAIN(tst_segmentation)

#include "tst_segmentation.moc"
