#include "layouts/CSplitButton.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QLabel>
#include <QRubberBand>
#include <QToolButton>

namespace {

QImage IconOf(const QWidget& picker, const QString& name)
{
    return picker.findChild<QToolButton*>(name)->icon().pixmap(30, 30).toImage();
}

} // namespace

class tst_picker : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isAStyledPopUp();
    void picksLayouts();
    void picksByKeys();
    void diesInItsSignal();
    void closesByPressOutsideAndWithoutFocus();
    void redrawsCustomLayoutsOnly();
    void tabTellsOfClicks();
    void tabColours();
};

void tst_picker::isAStyledPopUp()
{
    Installation installation;
    installation.Write("ResourcesBlank/Qss/liveviewsheet.qss", "QLabel{image: url(.*?/a.png);}");
    CSplitCatalog::Instance()->LoadLayouts();
    CSplitCustomDialog picker(nullptr);
    QCOMPARE(picker.size(), QSize(238, 274));
    QCOMPARE(picker.windowFlags(), Qt::Window | Qt::FramelessWindowHint | Qt::Popup);
    QCOMPARE(picker.styleSheet(), "QLabel{image: url(" + installation.Resources() + "/a.png);}");
}

void tst_picker::picksLayouts()
{
    CSplitCustomDialog picker(nullptr);
    SignalLog log;
    log.WatchAll(&picker);
    bool shownAtSignal = false;
    log.onSignal = [&](const QString&) { shownAtSignal = picker.isVisible(); };
    for (int i = 0; i < 2 * CSplitCatalog::LayoutCount; ++i) {
        picker.show();
        const QString button = QString(i % 2 ? "btnC%1" : "btnN%1").arg(i / 2 + 1);
        Mouse::Click(picker.findChild<QWidget*>(button), QPoint(10, 10));
        QCOMPARE(log.Take(), QStringList(QString("sig_btnWndSwidch(%1,%2)").arg(i % 2).arg(i / 2)));
        QVERIFY(shownAtSignal && !picker.isVisible());
    }
    // Called by nobody it picks the first.
    QMetaObject::invokeMethod(&picker, "slot_btnWndSwidch");
    QCOMPARE(log.Take(), QStringList("sig_btnWndSwidch(0,0)"));
}

void tst_picker::picksByKeys()
{
    CSplitCustomDialog picker(nullptr);
    SignalLog log;
    log.WatchAll(&picker);
    // The keys start anew each time.
    for (const auto& [keys, told] : {std::pair(QList<int>{Qt::Key_Down, Qt::Key_Right, Qt::Key_Down}, "0,6"),
                                     {QList<int>{Qt::Key_Down, Qt::Key_Up}, "0,0"},
                                     {QList<int>{Qt::Key_Right, Qt::Key_Down, Qt::Key_Down}, "1,0"}}) {
        picker.show();
        QTest::keyClick(&picker, Qt::Key_Return);
        for (int key : keys)
            QTest::keyClick(&picker, Qt::Key(key));
        QVERIFY(picker.findChild<QRubberBand*>()->isVisible());
        QTest::keyClick(&picker, Qt::Key_Return);
        QCOMPARE(log.Take(), QStringList(QString("sig_btnWndSwidch(%1)").arg(told)));
    }
    picker.show();
    QVERIFY(!picker.findChild<QRubberBand*>()->isVisible());
}

void tst_picker::diesInItsSignal()
{
    auto* picker = new CSplitCustomDialog(nullptr);
    const QPointer<QObject> guard(picker);
    picker->show();
    SignalLog log;
    log.WatchAll(picker);
    log.onSignal = [&](const QString&) { delete picker; };
    Mouse::Click(picker->findChild<QWidget*>("btnC3"), QPoint(10, 10));
    QVERIFY(!guard);
}

void tst_picker::closesByPressOutsideAndWithoutFocus()
{
    CSplitCustomDialog picker(nullptr);
    picker.show();
    Mouse::Press(&picker, QPoint(5, 5));
    QVERIFY(picker.testAttribute(Qt::WA_NoMouseReplay));
    QVERIFY(picker.isVisible());
    Mouse::Press(&picker, QPoint(-5, 5));
    QVERIFY(!picker.isVisible());
    picker.show();
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(&picker, &out);
    QVERIFY(!picker.isVisible());
}

void tst_picker::redrawsCustomLayoutsOnly()
{
    Installation installation;
    CSplitCatalog* catalog = CSplitCatalog::Instance();
    catalog->LoadLayouts();
    CSplitCustomDialog picker(nullptr);
    const QImage before = IconOf(picker, "btnN2");
    QCOMPARE(before.pixelColor(0, 15), QColor("#eeeeee"));
    QCOMPARE(IconOf(picker, "btnC2"), before);
    catalog->normalLayouts[1] = catalog->customLayouts[1] = catalog->normalLayouts[0];
    catalog->thumbnailSize = QSize(5, 5);
    picker.show();
    QCOMPARE(catalog->thumbnailSize, QSize(30, 30));
    QCOMPARE(IconOf(picker, "btnN2"), before);
    QCOMPARE(IconOf(picker, "btnC2").pixelColor(0, 15), QColor("#5c6576"));
}

void tst_picker::tabTellsOfClicks()
{
    const ExpectedWarning sheet("Unknown color name '#transparent'");
    CSplitCatalog::Instance()->thumbnailSize = QSize(30, 30);
    CSplitButton tab(nullptr);
    tab.SetText("13");
    tab.show();
    SignalLog log;
    log.WatchAll(&tab);
    Mouse::Press(tab.findChild<QLabel*>("label"), QPoint(2, 2), Qt::RightButton);
    QCOMPARE(log.Take(), QStringList("sig_clicked()"));
    QWidget* thumbnail = tab.findChild<QToolButton*>("btnpic");
    Mouse::Press(thumbnail, QPoint(5, 5));
    QCOMPARE(log.Take(), QStringList());
    Mouse::Release(thumbnail, QPoint(5, 5));
    QCOMPARE(log.Take(), QStringList("sig_clicked()"));
}

void tst_picker::tabColours()
{
    const ExpectedWarning sheet("Unknown color name '#transparent'");
    const std::tuple<int, bool, const char*, const char*> rows[] = {{1, true, "#e90202", "#ffffff"},
                                                                    {1, false, "#222428", "#ffffff"},
                                                                    {2, true, "#2279c3", "#ffffff"},
                                                                    {2, false, "#aeb6c5", "#000000"}};
    for (const auto& [style, selected, background, text] : rows) {
        Installation installation(style);
        CSplitButton tab(nullptr);
        tab.show();
        tab.SetSelected(!selected);
        tab.SetSelected(selected);
        QCOMPARE(tab.grab().toImage().pixelColor(8, 17), QColor(background));
        QCOMPARE(tab.findChild<QLabel*>("label")->palette().color(QPalette::WindowText), QColor(text));
    }
}

QTEST_MAIN(tst_picker)

#include "tst_picker.moc"
