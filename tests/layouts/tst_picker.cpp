#include "layouts/CSplitButton.h"
#include "layouts/CSplitCatalog.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QLabel>
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
    void formHasItsShape();
    void picksLayouts_data();
    void picksLayouts();
    void strangerPicksFirst();
    void diesInItsSignal();
    void hidesWithoutFocus();
    void pressOutsideCloses();
    void redrawsCustomLayoutsOnly();
    void tabTellsOfClicks();
    void tabColours_data();
    void tabColours();
};

void tst_picker::formHasItsShape()
{
    Installation installation;
    installation.Write("ResourcesBlank/Qss/liveviewsheet.qss", "QLabel{image: url(.*?/a.png);}");
    CSplitCatalog::Instance()->LoadLayouts();
    CSplitCustomDialog picker(nullptr);
    QCOMPARE(picker.size(), QSize(238, 274));
    QCOMPARE(picker.windowFlags(), Qt::Window | Qt::FramelessWindowHint | Qt::Popup);
    QCOMPARE(picker.focusPolicy(), Qt::StrongFocus);
    QVERIFY(picker.hasMouseTracking());
    QCOMPARE(picker.styleSheet(), "QLabel{image: url(" + installation.Resources() + "/a.png);}");
    QCOMPARE(picker.findChild<QLabel*>("labNormal")->text(), QString("PaneDeck.Normal Split"));
    QCOMPARE(picker.findChild<QLabel*>("labCustom")->text(), QString("PaneDeck.Custom Split"));
    QCOMPARE(picker.findChild<QToolButton*>("btnEditSplit")->toolTip(), QString("PaneDeck.Edit split"));
    QCOMPARE(picker.findChild<QToolButton*>("btnC10")->iconSize(), QSize(30, 30));
    picker.show();
    const QWidget* first = picker.findChild<QWidget*>("btnN1");
    QCOMPARE(first->mapTo(&picker, QPoint()).x(), 11);
    QCOMPARE(picker.findChild<QWidget*>("btnN2")->x() - first->geometry().right(), 7);
}

void tst_picker::picksLayouts_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("signal");
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        QTest::addRow("btnN%d", i + 1)
            << QString("btnN%1").arg(i + 1) << QString("sig_btnWndSwidch(0,%1)").arg(i);
        QTest::addRow("btnC%d", i + 1)
            << QString("btnC%1").arg(i + 1) << QString("sig_btnWndSwidch(1,%1)").arg(i);
    }
}

void tst_picker::picksLayouts()
{
    QFETCH(QString, button);
    QFETCH(QString, signal);
    CSplitCustomDialog picker(nullptr);
    picker.show();
    SignalLog log;
    log.WatchAll(&picker);
    bool shownAtSignal = false;
    log.onSignal = [&](const QString&) { shownAtSignal = picker.isVisible(); };
    Mouse::Click(picker.findChild<QWidget*>(button), QPoint(10, 10));
    QCOMPARE(log.Take(), QStringList(signal));
    QVERIFY(shownAtSignal);
    QVERIFY(!picker.isVisible());
}

void tst_picker::strangerPicksFirst()
{
    CSplitCustomDialog picker(nullptr);
    SignalLog log;
    log.WatchAll(&picker);
    QMetaObject::invokeMethod(&picker, "slot_btnWndSwidch");
    QCOMPARE(log.Take(), QStringList("sig_btnWndSwidch(0,0)"));
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

void tst_picker::hidesWithoutFocus()
{
    CSplitCustomDialog picker(nullptr);
    picker.show();
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(&picker, &out);
    QVERIFY(!picker.isVisible());
}

void tst_picker::pressOutsideCloses()
{
    CSplitCustomDialog picker(nullptr);
    picker.show();
    Mouse::Press(&picker, QPoint(5, 5));
    QVERIFY(picker.testAttribute(Qt::WA_NoMouseReplay));
    QVERIFY(picker.isVisible());
    Mouse::Press(&picker, QPoint(-5, 5));
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

void tst_picker::tabColours_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QString>("background");
    QTest::addColumn<QString>("text");
    QTest::newRow("dark, selected") << 1 << true << "#e90202"
                                    << "#ffffff";
    QTest::newRow("dark, plain") << 1 << false << "#222428"
                                 << "#ffffff";
    QTest::newRow("light, selected") << 2 << true << "#2279c3"
                                     << "#ffffff";
    QTest::newRow("light, plain") << 2 << false << "#aeb6c5"
                                  << "#000000";
}

void tst_picker::tabColours()
{
    QFETCH(int, style);
    QFETCH(bool, selected);
    QFETCH(QString, background);
    QFETCH(QString, text);
    const ExpectedWarning sheet("Unknown color name '#transparent'");
    Installation installation(style);
    CSplitButton tab(nullptr);
    tab.show();
    tab.SetSelected(!selected);
    tab.SetSelected(selected);
    QVERIFY(
        tab.styleSheet().startsWith("background-color:" + background + ";color:" + text + ";QToolButton{"));
    QCOMPARE(tab.grab().toImage().pixelColor(8, 17), QColor(background));
    QCOMPARE(tab.findChild<QLabel*>("label")->palette().color(QPalette::WindowText), QColor(text));
}

QTEST_MAIN(tst_picker)

#include "tst_picker.moc"
