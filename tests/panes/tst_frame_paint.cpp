#include "deck/CPaneDeck.h"
#include "panes/FramePictures.h"
#include "panes/GuardedFrame.h"
#include "panes/PlainLabel.h"
#include "panes/QMyLabel.h"
#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/PaintCounter.h"
#include "support/SeededGenerator.h"

#include <QBackingStore>
#include <QScreen>

#include <utility>

namespace {

QRect RandomRect(QRandomGenerator& random, const QSize& within)
{
    const QPoint one(random.bounded(within.width()), random.bounded(within.height()));
    const QPoint other(random.bounded(within.width()), random.bounded(within.height()));
    return QRect(one, other).normalized();
}

/// Has all painted that waits for it, which Qt 6 does by a timer of its own.
void PaintNow(QWidget& window)
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
    QEvent update(QEvent::UpdateRequest);
    QApplication::sendEvent(&window, &update);
}

} // namespace

class tst_frame_paint : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rendersInto_data();
    void rendersInto();
    void keepsToTheWindow_data();
    void keepsToTheWindow();
    void coversThroughPolish();
    void sparesWhatLiesUnderAFrame();
    void playsInUseAsWhenIdle_data();
    void playsInUseAsWhenIdle();

private:
    QRandomGenerator m_random = SeededGenerator();
};

using Render = std::function<void(QWidget&, QImage&, const QRegion&)>;
Q_DECLARE_METATYPE(Render)

void tst_frame_paint::rendersInto_data()
{
    QTest::addColumn<Render>("render");
    const QWidget::RenderFlags none;
    const auto row = [](const char* name, Render render) { QTest::newRow(name) << render; };
    row("a picture", [=](QWidget& w, QImage& i, const QRegion& r) { w.render(&i, QPoint(-4, 6), r, none); });
    row("a picture, whole", [](QWidget& w, QImage& i, const QRegion&) { w.render(&i); });
    row("a picture of another format", [=](QWidget& w, QImage& i, const QRegion& r) {
        i = i.convertToFormat(QImage::Format_RGB16);
        w.render(&i, QPoint(2, 3), r, none);
    });
    row("a picture of a fine screen", [=](QWidget& w, QImage& i, const QRegion& r) {
        i.setDevicePixelRatio(2);
        w.render(&i, QPoint(-4, 6), r, none);
    });
    row("a picture of a screen between two sizes", [=](QWidget& w, QImage& i, const QRegion& r) {
        i.setDevicePixelRatio(1.25);
        w.render(&i, QPoint(7, -3), r, none);
    });
    row("a picture of another format of a fine screen", [=](QWidget& w, QImage& i, const QRegion& r) {
        i = i.convertToFormat(QImage::Format_RGB16);
        i.setDevicePixelRatio(1.75);
        w.render(&i, QPoint(2, 3), r, none);
    });
    row("a painter", [=](QWidget& w, QImage& i, const QRegion& r) {
        QPainter painter(&i);
        painter.translate(5, 9);
        w.render(&painter, QPoint(3, -20), r, none);
    });
    row("a clipped painter", [=](QWidget& w, QImage& i, const QRegion& r) {
        QPainter painter(&i);
        painter.setClipRegion(QRegion(10, 10, 60, 30) + QRegion(30, 30, 15, 80));
        w.render(&painter, QPoint(3, 2), r, none);
    });
    row("a turned painter that shows half", [=](QWidget& w, QImage& i, const QRegion& r) {
        QPainter painter(&i);
        painter.translate(60, 0);
        painter.rotate(33);
        painter.setOpacity(0.5);
        w.render(&painter, QPoint(3, 2), r, none);
    });
    row("a pixmap", [](QWidget& w, QImage& i, const QRegion& r) { i = w.grab(r.boundingRect()).toImage(); });
}

void tst_frame_paint::rendersInto()
{
    QFETCH(Render, render);
    for (int i = 0; i < 25; ++i) {
        const GuardedFrame frame(QSize(Between(m_random, 1, 200), Between(m_random, 1, 200)), m_random);
        QMyLabel label(nullptr);
        PlainLabel plain;
        label.slot_BufferChange(frame.Address(), frame.Size().width(), frame.Size().height());
        plain.frame = frame.Copy();
        const QSize size(Between(m_random, 1, 150), Between(m_random, 1, 150));
        label.resize(size);
        plain.resize(size);
        const QRegion region = QRegion(RandomRect(m_random, size)) + RandomRect(m_random, size);
        QImage ours =
            Noise(QSize(130, 120), i % 2 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
        QImage wanted = ours;
        render(label, ours, region);
        render(plain, wanted, region);
        const QString difference = Difference(ours, wanted);
        QVERIFY2(difference.isEmpty(), qPrintable(TextOf(size) + " " + difference));
    }
}

namespace {

/// A window as a deck builds it, down to the label and with a bar that lies over its upper edge.
template <class Label> struct Window
{
    Window()
    {
        window.resize(240, 180);
        surface.setAutoFillBackground(true);
        surface.setPalette(QPalette(QColor(10, 20, 30)));
        label.setAutoFillBackground(true);
        label.setPalette(QPalette(QColor(249, 249, 249)));
        surface.setGeometry(20, 15, 200, 150);
        label.setGeometry(7, 9, 180, 130);
        bar.setAutoFillBackground(true);
        bar.setGeometry(25, 10, 150, 40);
        window.show();
    }

    QImage Shown()
    {
        PaintNow(window);
        return static_cast<QImage*>(window.backingStore()->paintDevice())->copy();
    }

    QWidget window;
    QFrame surface{&window};
    Label label{&surface};
    QFrame bar{&window};
};

} // namespace

void tst_frame_paint::keepsToTheWindow_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("no sheet") << QString();
    QTest::newRow("sheet of a deck") << "QFrame{background-color: rgb(44, 55, 66);}";
    QTest::newRow("sheet with borders") << "QFrame{background-color: rgb(44, 55, 66); border: 3px solid red;"
                                           " border-radius: 9px;}";
    QTest::newRow("sheet with a glassy bar") << "QFrame{background-color: rgba(44, 55, 66, 120);}";
}

/// Random steps on two windows, one with the label and one with the plain one; both must always look the
/// same.
void tst_frame_paint::keepsToTheWindow()
{
    QFETCH(QString, sheet);
    Window<QMyLabel> ours;
    Window<PlainLabel> plain;
    ours.window.setStyleSheet(sheet);
    plain.window.setStyleSheet(sheet);
    const GuardedFrame small(QSize(88, 72), m_random);
    const GuardedFrame large(QSize(352, 288), m_random);
    const auto both = [&](auto step) { step(ours), step(plain); };
    const auto show = [&](const GuardedFrame* frame) {
        ours.label.slot_BufferChange(frame ? frame->Address() : 0, frame ? frame->Size().width() : 0,
                                     frame ? frame->Size().height() : 0);
        plain.label.frame = frame ? frame->Copy() : QImage();
        plain.label.update();
    };
    // Between two sizes of pixels a border blends anew with what lies under its outermost pixel, so both
    // labels must paint as often.
    const auto say = [&](const QString& text) {
        ours.label.SetText(text);
        if (std::exchange(plain.label.text, text) != text)
            plain.label.update();
    };
    int i = 0;
    QRect rect;
    const std::function<void()> steps[] = {
        [&] { show(nullptr); },
        [&] { say(i % 3 ? "No video" : ""); },
        [&] { both([&](auto& w) { w.label.setGeometry(rect); }); },
        [&] { both([&](auto& w) { w.label.setGeometry(7, 9, 180, 130); }); },
        [&] { both([&](auto& w) { w.bar.move(rect.topLeft()); }); },
        [&] { both([&](auto& w) { w.bar.setVisible(i % 2); }); },
        [&] { both([&](auto& w) { w.window.setStyleSheet(i % 2 ? QString() : sheet); }); },
        [&] { both([&](auto& w) { w.window.resize(200 + i, 250 - i); }); },
        [&] { both([&](auto& w) { w.label.setVisible(i % 2); }); },
        [&] { both([&](auto& w) { w.surface.update(rect); }); },
        [&] { both([&](auto& w) { w.label.update(QRegion(rect) - rect.adjusted(9, 9, -9, -9)); }); },
        [&] { show(&small); },
        [&] { show(&large); },
    };
    for (i = 0; i < 200; ++i) {
        rect = RandomRect(m_random, QSize(180, 130));
        const int step = m_random.bounded(int(std::size(steps)));
        steps[step]();
        const QString difference = Difference(ours.Shown(), plain.Shown());
        QVERIFY2(difference.isEmpty(), qPrintable(QString("step %1 (%2) ").arg(i).arg(step) + difference));
    }
}

/// A sheet with a border takes the attribute away whenever the label is polished.
void tst_frame_paint::coversThroughPolish()
{
    const GuardedFrame frame(QSize(88, 72), m_random);
    QWidget window;
    QMyLabel label(&window);
    window.setStyleSheet("QFrame{border: 2px solid red;}");
    label.slot_BufferChange(frame.Address(), 88, 72);
    window.show();
    QVERIFY(label.testAttribute(Qt::WA_OpaquePaintEvent));
    window.setStyleSheet("QFrame{border: 3px solid blue;}");
    QVERIFY(label.testAttribute(Qt::WA_OpaquePaintEvent));
    label.slot_BufferChange(0, 88, 72);
    window.setStyleSheet("QFrame{border: 2px solid red;}");
    QVERIFY(!label.testAttribute(Qt::WA_OpaquePaintEvent));
}

void tst_frame_paint::sparesWhatLiesUnderAFrame()
{
    PaintCounter counter;
    Window<QMyLabel> window;
    window.bar.hide();
    window.window.setStyleSheet("QFrame{background-color: rgb(44, 55, 66);}");
    window.Shown();
    window.surface.installEventFilter(&counter);
    const GuardedFrame frame(QSize(88, 72), m_random);
    const auto paintsOf = [&](ulong address) {
        counter.paints = 0;
        window.label.slot_BufferChange(address, 88, 72);
        window.Shown();
        return counter.paints;
    };
    QCOMPARE(paintsOf(frame.Address()), 0);
    QCOMPARE(paintsOf(0), 1);
    QCOMPARE(paintsOf(frame.Address()), 0);
}

namespace {

/// A deck whose panes are all in use, or all idle. The panes of an alarm deck take the title bar in either
/// case.
struct Deck
{
    explicit Deck(bool inUse) : inUse(inUse)
    {
        // A pane that comes up under the cursor would call the title bar.
        QCursor::setPos(deck.screen()->geometry().bottomRight());
        deck.resize(331, 227);
        deck.SetShowWndNo(4);
        for (int i = 0; i < 4; ++i)
            deck.EnableRefresh(i, !inUse);
        deck.show();
    }

    void Show(int pane, const GuardedFrame& frame)
    {
        auto* label = static_cast<QMyLabel*>(deck.GetHWND(pane));
        label->setUpdatesEnabled(true);
        label->slot_BufferChange(frame.Address(), frame.Size().width(), frame.Size().height());
        label->setUpdatesEnabled(!inUse);
    }

    QImage Shown()
    {
        PaintNow(deck);
        return static_cast<QImage*>(deck.backingStore()->paintDevice())->copy();
    }

    const bool inUse;
    CPaneDeck deck{nullptr, WND_TYPE_ALARM, 6};
};

} // namespace

void tst_frame_paint::playsInUseAsWhenIdle_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("opaque bar") << "#TitleWidget{background-color: rgb(1, 2, 3);}";
    QTest::newRow("glassy bar, border") << "#TitleWidget{background-color: rgba(255, 0, 255, 120);}"
                                           "QFrame{background-color: rgb(4, 5, 6);}"
                                           "QLabel{border: 2px solid rgba(200, 0, 0, 90);}";
}

/// Random steps on two decks: what is in use looks as what paints by itself, whatever lies over it and
/// whatever was painted since the last frame.
void tst_frame_paint::playsInUseAsWhenIdle()
{
    QFETCH(QString, sheet);
    Installation installation;
    installation.WritePicture("ResourcesBlank/VideoWidget/ALARM.png", 74, 74, QColor(255, 255, 0, 120));
    const GuardedFrame frames[] = {{QSize(88, 72), m_random}, {QSize(352, 288), m_random}};
    Deck decks[] = {Deck(true), Deck(false)};
    int pane = 0;
    int i = 0;
    const std::function<void(Deck&)> steps[] = {
        [&](Deck& d) { d.Show(pane, frames[i % 2]); },
        [&](Deck& d) { d.deck.showTitle(pane); },
        [&](Deck& d) { d.deck.setTitleShow(false); },
        [&](Deck& d) { d.deck.ChangeFreeze(pane, i % 2); },
        [&](Deck& d) { d.deck.resize(300 + i % 37, 260 - i % 41); },
        [&](Deck& d) { d.deck.SetActiveWnd(pane); },
        [&](Deck& d) { d.deck.setScaseType(WndScase(i % 11), pane); },
        [&](Deck& d) { d.deck.SetShowWndNo(i % 2 ? 4 : 1); },
        [&](Deck& d) { d.deck.setStyleSheet(i % 2 ? sheet : QString()); },
        [&](Deck& d) { d.deck.setVisible(!d.deck.isVisible()), d.deck.show(); },
        [&](Deck& d) { d.deck.update(i, i, 60, 60); },
    };
    for (Deck& deck : decks) {
        deck.deck.setStyleSheet(sheet);
        for (pane = 0; pane < 6; ++pane)
            deck.Show(pane, frames[0]);
    }
    for (i = 0; i < 150; ++i) {
        pane = m_random.bounded(4);
        const int step = m_random.bounded(int(std::size(steps)));
        for (Deck& deck : decks)
            steps[step](deck);
        const QImage shown = decks[0].Shown();
        decks[0].deck.update();
        const QString stale = Difference(shown, decks[0].Shown());
        const QString difference = stale.isEmpty() ? Difference(shown, decks[1].Shown()) : "stale " + stale;
        QVERIFY2(difference.isEmpty(), qPrintable(QString("step %1 (%2) ").arg(i).arg(step) + difference));
    }
}

QTEST_MAIN(tst_frame_paint)

#include "tst_frame_paint.moc"
