#include "DeckProbe.h"
#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCustomDialog.h"
#include "support/RunTests.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>

using namespace DeckProbe;

namespace {

QString TextOf(QObject* object, QAccessible::Text kind)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(object);
    return interface ? interface->text(kind) : QString("no interface");
}

QAccessibleInterface* Scale(CPaneDeck& deck)
{
    for (QWidget* widget : deck.findChildren<QWidget*>()) {
        if (widget->inherits("CTimerSlider"))
            return QAccessible::queryAccessibleInterface(widget);
    }
    return nullptr;
}

/// The controls that nobody could tell from each other without seeing them.
QString Nameless(const QWidget& top)
{
    QStringList names;
    for (QWidget* widget : top.findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<QAbstractButton*>(widget) ||
                               qobject_cast<QAbstractSlider*>(widget) ||
                               qobject_cast<QAbstractSpinBox*>(widget);
        if (isControl && !widget->isHidden() && TextOf(widget, QAccessible::Name).isEmpty())
            names.append(widget->objectName());
    }
    return names.join(' ');
}

} // namespace

/// What a screen reader is told of a deck.
class tst_deck_accessibility : public DeckTest
{
    Q_OBJECT

private Q_SLOTS:
    void panesTellWhatTheyAre();
    void controlsHaveNames_data();
    void controlsHaveNames();
    void scaleIsASliderOfTimes();
    void readerMayEndTheDeck();
};

void tst_deck_accessibility::panesTellWhatTheyAre()
{
    CPaneDeck deck(nullptr, WND_TYPE_MONITOR, 9);
    deck.SetShowWndNo(9);
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Name), QString("Pane 9"));
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Description), QString("idle"));
    deck.SetTitle(8, "Door");
    deck.EnableRefresh(8, false);
    deck.ChangeFreeze(8, true);
    deck.SetBtnCheck(8, BTN_RECORD, true);
    deck.SetBtnCheck(8, BTN_AUDIO, true);
    deck.SetActiveWnd(8);
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Name), QString("Pane 9, Door"));
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Description), QString("playing, alarm, recording, sound on"));
    QVERIFY(QAccessible::queryAccessibleInterface(Pane(deck, 8))->state().selected);
    QVERIFY(!QAccessible::queryAccessibleInterface(Pane(deck, 0))->state().selected);
    QCOMPARE(QAccessible::queryAccessibleInterface(Pane(deck, 0))->role(), QAccessible::Pane);
    deck.ChangeFreeze(8, false);
    deck.ResetWnd(8);
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Name), QString("Pane 9"));
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Description), QString("idle"));
    Pane(deck, 8)->setAccessibleName("the yard");
    QCOMPARE(TextOf(Pane(deck, 8), QAccessible::Name), QString("the yard"));
}

void tst_deck_accessibility::controlsHaveNames_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("live") << int(WND_TYPE_MONITOR);
    QTest::newRow("alarm") << int(WND_TYPE_ALARM);
    QTest::newRow("playback") << int(WND_TYPE_PLAYBACK);
    QTest::newRow("tour") << int(WND_TYPE_TOUR);
}

void tst_deck_accessibility::controlsHaveNames()
{
    QFETCH(int, kind);
    CPaneDeck deck(nullptr, _WND_TYPE(kind), 4);
    deck.SetShowWndNo(4);
    deck.OpenPlayBackSlider(0);
    QCOMPARE(Nameless(deck), QString());
    const ExpectedWarning tabs("Unknown color name '#transparent'");
    const CSegmentationDialog editor(nullptr);
    QCOMPARE(Nameless(editor), QString());
    const CSplitCustomDialog picker(nullptr);
    QCOMPARE(Nameless(picker), QString());
}

void tst_deck_accessibility::scaleIsASliderOfTimes()
{
    CPaneDeck deck(nullptr, WND_TYPE_PLAYBACK, 4);
    deck.resize(900, 600);
    deck.SetShowWndNo(4);
    deck.show();
    QSignalSpy released(&deck, &CPaneDeck::sig_TimerSliderReleased);
    QAccessibleInterface* scale = Scale(deck);
    QVERIFY(scale && scale->valueInterface());
    QCOMPARE(scale->role(), QAccessible::Slider);
    QCOMPARE(scale->text(QAccessible::Value), QString("00:00:00"));
    deck.SetSelectedTime(QTime(13, 5, 9));
    QCOMPARE(scale->text(QAccessible::Value), QString("13:05:09"));
    QCOMPARE(released.count(), 0);
    scale->valueInterface()->setCurrentValue(3600);
    QCOMPARE(released.count(), 1);
    QCOMPARE(deck.SelectedTime(), QTime(1, 0));
    scale->valueInterface()->setCurrentValue(1000000);
    QCOMPARE(scale->text(QAccessible::Value), QString("23:59:59"));
    scale->valueInterface()->setCurrentValue(-5);
    QCOMPARE(deck.SelectedTime(), QTime(0, 0));
}

void tst_deck_accessibility::readerMayEndTheDeck()
{
    QPointer<CPaneDeck> deck = new CPaneDeck(nullptr, WND_TYPE_PLAYBACK, 1);
    deck->SetShowWndNo(1);
    connect(deck.data(), &CPaneDeck::sig_TimerSliderReleased, this, [&] { delete deck; });
    Scale(*deck)->valueInterface()->setCurrentValue(60);
    QVERIFY(!deck);
}

int main(int argc, char** argv)
{
    return RunTests<tst_deck_accessibility>(argc, argv);
}

#include "tst_deck_accessibility.moc"
