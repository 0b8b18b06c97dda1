#include "deck/CPaneDeck.h"
#include "panes/CTimePlayBackWidget.h"
#include "panes/CVideoTitleWidget.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"
#include "support/SignalLog.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSlider>

class tst_pane_bars : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void titleRow();
    void titleLoadsCheckStatesSilently();
    void titleNarrowerThanItsText();
    void positionShows_data();
    void positionShows();
    void userHoldsTheSlider();
    void pauseAndClose();
    void paneOpensOneBar();
};

void tst_pane_bars::titleRow()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 1);
    auto* inner = deck.findChild<QWidget*>("TitleWidget");
    QStringList row;
    for (int i = 0; i < inner->layout()->count(); ++i) {
        QWidget* widget = inner->layout()->itemAt(i)->widget();
        row.append(widget ? widget->objectName() + "|" + widget->toolTip() : "space");
    }
    const QStringList expected{"|",
                               "space",
                               "space",
                               "btnRemoteControl|PaneDeck.Close btnRemote Control",
                               "btnLocalRecord|PaneDeck.Local Record",
                               "btnsnapshot|PaneDeck.Snapshot",
                               "btnAudio|PaneDeck.Audio",
                               "btninstant|LiveView.Instant playback",
                               "btnZoomIn|PaneDeck.Zoom",
                               "btnclose|PaneDeck.Close Video"};
    QCOMPARE(row, expected);
    QVERIFY(!inner->parentWidget()->isWindow());
    QVERIFY(inner->findChild<QPushButton*>("btnRemoteControl")->isHidden());
}

void tst_pane_bars::titleLoadsCheckStatesSilently()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.SetShowWndNo(4);
    deck.showTitle(0);
    SignalLog log;
    log.WatchAll(&deck);
    auto* title = deck.findChild<CVideoTitleWidget*>();
    for (int button = BTN_STOP; button <= BTN_TIME_CLIP; ++button)
        title->SetBtnChecked(Btn_type_EX(button), true);
    QCOMPARE(log.Take(), QStringList());
    for (const QPushButton* button : title->findChildren<QPushButton*>())
        QCOMPARE(button->isChecked(), button->isCheckable());
}

void tst_pane_bars::titleNarrowerThanItsText()
{
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 64);
    deck.resize(300, 200);
    deck.SetShowWndNo(64);
    deck.show();
    deck.SetTitle(1, "a title much wider than one of sixty-four panes");
    deck.showTitle(1);
    int width = 0;
    int height = 0;
    deck.GetWindowRect(1, width, height);
    QCOMPARE(deck.findChild<CVideoTitleWidget*>()->size(), QSize(width - 2, 20));
}

void tst_pane_bars::positionShows_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<qint64>("time");
    QTest::addColumn<int>("value");
    QTest::newRow("inside") << 250 << qint64(1700000000) << 250;
    QTest::newRow("above the range, past 32 bits") << 1001 << (qint64(1) << 33) << 1000;
    QTest::newRow("below the range, before 1970") << -1 << qint64(-1) << 0;
}

void tst_pane_bars::positionShows()
{
    QFETCH(int, position);
    QFETCH(qint64, time);
    QFETCH(int, value);
    CTimePlayBackWidget bar(nullptr);
    auto* slider = bar.findChild<QSlider*>("SdrTime");
    bar.SetSliderPos(position, time);
    QCOMPARE(slider->value(), value);
    const QDateTime shown = QDateTime::fromString(slider->toolTip(), "yyyy.MM.dd hh:mm:ss");
    QCOMPARE(shown.toSecsSinceEpoch(), time);
}

void tst_pane_bars::userHoldsTheSlider()
{
    CTimePlayBackWidget bar(nullptr);
    bar.resize(600, 24);
    bar.show();
    auto* slider = bar.findChild<QSlider*>("SdrTime");
    bar.SetSliderPos(0, 0);
    SignalLog log;
    log.WatchAll(&bar);
    const int middle = slider->height() / 2;
    Mouse::Press(slider, QPoint(4, middle));
    bar.SetSliderPos(900, 900);
    QCOMPARE(slider->value(), 0);
    Mouse::Move(slider, QPoint(slider->width() / 2, middle), Qt::LeftButton);
    QCOMPARE(log.Take(), QStringList());
    const int dragged = slider->value();
    QVERIFY(dragged > 300 && dragged < 700);
    Mouse::Release(slider, QPoint(slider->width() / 2, middle));
    QCOMPARE(log.Take(), QStringList(QString("sig_ReplaySeek(%1)").arg(dragged)));
    QVERIFY(!slider->isSliderDown());
    Mouse::Click(slider, QPoint(slider->width() - 6, middle), Qt::RightButton);
    QCOMPARE(log.Take(), QStringList());
    bar.SetSliderPos(900, 900);
    QCOMPARE(slider->value(), 900);
}

void tst_pane_bars::pauseAndClose()
{
    CTimePlayBackWidget bar(nullptr);
    SignalLog log;
    log.WatchAll(&bar);
    auto* stop = bar.findChild<QPushButton*>("btnStop");
    stop->click();
    stop->click();
    bar.findChild<QPushButton*>("btnclose")->click();
    QCOMPARE(log.Take(),
             (QStringList{"sig_btnStopClick(true)", "sig_btnStopClick(false)", "sig_btnCloseClick()"}));
}

void tst_pane_bars::paneOpensOneBar()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 4);
    deck.SetShowWndNo(4);
    deck.resize(420, 470);
    deck.show();
    SignalLog log;
    log.WatchAll(&deck);
    auto* label = static_cast<QWidget*>(deck.GetHWND(2));
    const int height = label->height();
    deck.ClosePlayBackSlider(2);
    deck.SetPlayBackSliderPos(2, 5, 5);
    deck.OpenPlayBackSlider(2);
    deck.OpenPlayBackSlider(2);
    const auto bars = deck.findChildren<CTimePlayBackWidget*>();
    QCOMPARE(bars.size(), 1);
    QTRY_COMPARE(label->height(), height - bars.first()->height());
    deck.showTitle(2);
    auto* instant = deck.findChild<QPushButton*>("btninstant");
    QVERIFY(instant->isChecked());
    QVERIFY(!deck.btncheck(2, BTN_INSTANT_PLAYBACK));
    instant->click();
    QVERIFY(!instant->isChecked());
    deck.SetPlayBackSliderPos(2, 700, 0);
    QVERIFY(instant->isChecked());
    QCOMPARE(bars.first()->findChild<QSlider*>()->value(), 700);
    bars.first()->findChild<QPushButton*>("btnStop")->click();
    bars.first()->findChild<QPushButton*>("btnclose")->click();
    QCOMPARE(log.Take(),
             (QStringList{"sig_OnWndBtnClick(2,5)", "sig_btnStopClick(2,true)", "sig_btnCloseClick(2)"}));
    QVERIFY2(bars.first()->isVisible(), "closing is the application's business");
    deck.ClosePlayBackSlider(2);
    QVERIFY(!instant->isChecked());
    QVERIFY(bars.first()->isHidden());
    QTRY_COMPARE(label->height(), height);
}

int main(int argc, char** argv)
{
    return RunTests<tst_pane_bars>(argc, argv);
}

#include "tst_pane_bars.moc"
