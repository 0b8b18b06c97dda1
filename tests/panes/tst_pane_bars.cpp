#include "deck/CPaneDeck.h"
#include "panes/CTimePlayBackWidget.h"
#include "panes/CVideoTitleWidget.h"
#include "panes/QMyLabel.h"
#include "panes/QSubWidget.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "support/SignalLog.h"

#include <QBitmap>
#include <QDateTime>
#include <QFile>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSlider>

#include <memory>
#include <vector>

class tst_pane_bars : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void titleRow();
    void titleFitsItsPane();
    void picturePlaysUnderWhatLiesOver_data();
    void picturePlaysUnderWhatLiesOver();
    void eachDeckLooksForItsAlarmPicture();
    void positionShows();
    void userHoldsTheSlider();
    void paneOpensOneBar();
};

void tst_pane_bars::titleRow()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 1);
    deck.SetShowWndNo(1);
    deck.showTitle(0);
    const QLayout* layout = deck.findChild<QWidget*>("TitleWidget")->layout();
    QStringList row;
    for (int i = 0; i < layout->count(); ++i) {
        if (auto* button = qobject_cast<QPushButton*>(layout->itemAt(i)->widget()))
            row.append(button->objectName() + " " + button->toolTip().section('.', 1));
    }
    QCOMPARE(row.join("|"), QString("btnRemoteControl Close btnRemote Control|btnLocalRecord Local Record|"
                                    "btnsnapshot Snapshot|btnAudio Audio|btninstant Instant playback|"
                                    "btnZoomIn Zoom|btnclose Close Video"));
}

void tst_pane_bars::titleFitsItsPane()
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

void tst_pane_bars::picturePlaysUnderWhatLiesOver_data()
{
    QTest::addColumn<QString>("bar");
    QTest::addColumn<QColor>("alarm");
    QTest::addColumn<bool>("through");
    QTest::newRow("title bar") << "rgb(255, 255, 0)" << QColor() << false;
    QTest::newRow("glassy title bar") << "rgba(255, 255, 0, 200)" << QColor() << true;
    QTest::newRow("alarm mark") << QString() << QColor(Qt::yellow) << false;
    QTest::newRow("glassy alarm mark") << QString() << QColor(255, 255, 0, 200) << true;
}

void tst_pane_bars::picturePlaysUnderWhatLiesOver()
{
    QFETCH(QString, bar);
    QFETCH(QColor, alarm);
    QFETCH(bool, through);
    Installation installation;
    QImage mark(74, 74, through ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    mark.fill(Qt::white);
    for (int i = 0; alarm.isValid() && i < 34 * 34; ++i)
        mark.setPixelColor(20 + i % 34, 20 + i / 34, alarm);
    installation.WritePicture("ResourcesBlank/VideoWidget/ALARM.png", 74, 74, Qt::white);
    QVERIFY(mark.save(installation.Resources() + "/VideoWidget/ALARM.png"));
    CPaneDeck deck(nullptr, WND_TYPE_ALARM, 1);
    deck.resize(300, 200);
    deck.SetShowWndNo(1);
    deck.show();
    deck.setStyleSheet(bar.isEmpty() ? "#None{}" : "#TitleWidget{background-color: " + bar + ";}");
    const auto shown = [&deck](const QPoint& point) {
        const QImage screen = deck.screen()->grabWindow(deck.winId()).toImage();
        return screen.valid(point) ? screen.pixelColor(point) : QColor();
    };
    QTRY_VERIFY(shown(QPoint(150, 100)).isValid());
    auto* label = static_cast<QWidget*>(deck.GetHWND(0));
    QImage frame(40, 40, QImage::Format_RGB888);
    deck.EnableRefresh(0, false);
    deck.ChangeFreeze(0, alarm.isValid());
    if (!bar.isEmpty())
        deck.showTitle(0);
    QSet<QRgb> seen;
    for (const QColor color : {Qt::red, Qt::green, Qt::blue}) {
        frame.fill(color);
        label->setUpdatesEnabled(true);
        QMetaObject::invokeMethod(label, "slot_BufferChange",
                                  Q_ARG(ulong, ulong(frame.constBits())), Q_ARG(int, 40), Q_ARG(int, 40));
        label->setUpdatesEnabled(false);
        QTRY_COMPARE(shown(QPoint(150, 100)), color);
        seen.insert(shown(bar.isEmpty() ? QPoint(262, 37) : QPoint(100, 10)).rgb());
        QVERIFY(!seen.contains(color.rgb()));
    }
    QCOMPARE(seen.size(), through ? 3 : 1);
}

void tst_pane_bars::eachDeckLooksForItsAlarmPicture()
{
    Installation installation;
    installation.Write("ResourcesBlank/VideoWidget/ALARM.png", QByteArray());
    const QString path = installation.Resources() + "/VideoWidget/ALARM.png";
    std::vector<std::unique_ptr<CPaneDeck>> decks;
    for (const QSize& size : {QSize(74, 74), QSize(41, 60), QSize()}) {
        QFile::remove(path);
        QImage drawn(size, QImage::Format_RGB32);
        drawn.fill(Qt::white);
        if (!drawn.isNull()) {
            QPainter(&drawn).fillRect(drawn.rect().adjusted(9, 5, -3, -7), Qt::red);
            QVERIFY(drawn.save(path));
        }
        decks.push_back(std::make_unique<CPaneDeck>(nullptr, WND_TYPE_ALARM, 3));
        int marks = 0;
        for (QSubWidget* surface : decks.back()->findChildren<QSubWidget*>()) {
            const auto* mark = surface->findChildren<QLabel*>().value(1);
            QVERIFY(mark && mark != surface->GetLabel());
            QCOMPARE(mark->pixmap(Qt::ReturnByValue).toImage(), QPixmap(path).toImage());
            QCOMPARE(mark->mask(), QRegion(QPixmap(path).createHeuristicMask(true)));
            ++marks;
        }
        QCOMPARE(marks, 3);
    }
}

void tst_pane_bars::positionShows()
{
    CTimePlayBackWidget bar(nullptr);
    auto* slider = bar.findChild<QSlider*>("SdrTime");
    const QVector<std::tuple<int, qint64, int>> rows{
        {250, 1700000000, 250}, {1001, qint64(1) << 33, 1000}, {-1, -1, 0}};
    for (const auto& [position, time, value] : rows) {
        bar.SetSliderPos(position, time);
        QCOMPARE(slider->value(), value);
        const QDateTime shown = QDateTime::fromString(slider->toolTip(), "yyyy.MM.dd hh:mm:ss");
        QCOMPARE(shown.toSecsSinceEpoch(), time);
    }
}

void tst_pane_bars::userHoldsTheSlider()
{
    CTimePlayBackWidget bar(nullptr);
    bar.resize(600, 24);
    bar.show();
    auto* slider = bar.findChild<QSlider*>("SdrTime");
    bar.SetSliderPos(0, 0);
    const QString time = slider->toolTip();
    SignalLog log;
    log.WatchAll(&bar);
    const QPoint middle = slider->rect().center();
    Mouse::Press(slider, QPoint(4, middle.y()));
    bar.SetSliderPos(900, 900);
    QCOMPARE(slider->value(), 0);
    QCOMPARE(slider->toolTip(), time);
    Mouse::Move(slider, middle, Qt::LeftButton);
    QCOMPARE(log.Take(), QStringList());
    const int dragged = slider->value();
    QVERIFY(dragged > 300 && dragged < 700);
    Mouse::Release(slider, middle);
    QCOMPARE(log.Take(), QStringList(QString("sig_ReplaySeek(%1)").arg(dragged)));
    Mouse::Click(slider, QPoint(slider->width() - 6, middle.y()), Qt::RightButton);
    QCOMPARE(log.Take(), QStringList());
    bar.SetSliderPos(900, 900);
    QCOMPARE(slider->value(), 900);
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
    CTimePlayBackWidget* bar = bars.first();
    QTRY_COMPARE(label->height(), height - bar->height());
    deck.showTitle(2);
    auto* instant = deck.findChild<QPushButton*>("btninstant");
    QVERIFY(instant->isChecked() && !deck.btncheck(2, BTN_INSTANT_PLAYBACK));
    instant->click();
    QVERIFY(!instant->isChecked());
    deck.SetPlayBackSliderPos(2, 700, 0);
    QVERIFY(instant->isChecked());
    QCOMPARE(bar->findChild<QSlider*>()->value(), 700);
    for (const char* button : {"btnStop", "btnStop", "btnclose"})
        bar->findChild<QPushButton*>(button)->click();
    QCOMPARE(log.Take(), (QStringList{"sig_OnWndBtnClick(2,5)", "sig_btnStopClick(2,true)",
                                      "sig_btnStopClick(2,false)", "sig_btnCloseClick(2)"}));
    QVERIFY2(bar->isVisible(), "closing is the application's business");
    deck.ClosePlayBackSlider(2);
    QVERIFY(!instant->isChecked() && bar->isHidden());
    QTRY_COMPARE(label->height(), height);
}

QTEST_MAIN(tst_pane_bars)

#include "tst_pane_bars.moc"
