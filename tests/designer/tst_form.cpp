#include "FormDeck.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QBuffer>
#include <QFormBuilder>
#include <QUiLoader>

#include <memory>

namespace {

// What Qt thinks of the strip's sheet.
constexpr char SheetWarning[] = "QCssParser::parseColorValue: Specified color";

/// A form that is nothing but a deck, the layout named before the panes.
QByteArray form(const QString& kind, int panes, int layout)
{
    const QString text = R"(<ui version="4.0"><class>Form</class><widget class="FormDeck" name="Form">
        <property name="firstLayout"><number>%3</number></property>
        <property name="paneCount"><number>%2</number></property>
        <property name="kind"><enum>FormDeck::%1</enum></property></widget></ui>)";
    return text.arg(kind).arg(panes).arg(layout).toUtf8();
}

template <class Loader> std::unique_ptr<QWidget> load(QByteArray xml)
{
    Loader loader;
    if constexpr (std::is_same_v<Loader, QFormBuilder>)
        loader.clearPluginPaths(), loader.addPluginPath(PLUGIN_DIR);
    else
        loader.addPluginPath(PLUGIN_DIR);
    QBuffer buffer(&xml);
    buffer.open(QIODevice::ReadOnly);
    return std::unique_ptr<QWidget>(loader.load(&buffer, nullptr));
}

CPaneDeck* deckOf(const QWidget* widget)
{
    return widget->property("deck").value<CPaneDeck*>();
}

int paneCount(CPaneDeck* deck)
{
    int count = 0;
    while (deck->GetHWND(count))
        ++count;
    return count;
}

int shownPanes(CPaneDeck* deck)
{
    int count = 0;
    for (int i = 0; deck->GetHWND(i); ++i)
        count += deck->PaneWidget(i)->isVisibleTo(deck);
    return count;
}

bool has(CPaneDeck* deck, const char* className)
{
    const QList<QWidget*> children = deck->findChildren<QWidget*>();
    return std::any_of(children.begin(), children.end(),
                       [&](QWidget* child) { return child->inherits(className); });
}

} // namespace

class tst_form : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void deckOfAForm_data();
    void deckOfAForm();
    void unknownKind();
    void loaderOfAnApplication();
    void shownForm();
    void changeInASignal();
};

void tst_form::deckOfAForm_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("panes");
    QTest::addColumn<int>("layout");
    QTest::addColumn<QByteArray>("paneClass");
    QTest::addColumn<int>("madePanes");
    QTest::addColumn<int>("shown");
    QTest::newRow("live") << "Monitor" << 16 << 9 << QByteArray("CMonitorWidget") << 16 << 9;
    QTest::newRow("alarm") << "Alarm" << 4 << 1 << QByteArray("CAlarmWidget") << 4 << 1;
    QTest::newRow("playback") << "Playback" << 9 << 8 << QByteArray("CPlaybackWidget") << 9 << 8;
    QTest::newRow("tour, all") << "Tour" << 64 << 64 << QByteArray("CTourWidget") << 64 << 64;
    QTest::newRow("no panes") << "Monitor" << 0 << 4 << QByteArray("CMonitorWidget") << 1 << 1;
    QTest::newRow("fewer than none") << "Tour" << -5 << -5 << QByteArray("CTourWidget") << 1 << 1;
    QTest::newRow("too many") << "Playback" << 1000 << 1000 << QByteArray("CPlaybackWidget") << 64 << 64;
    QTest::newRow("more on the page than there are")
        << "Alarm" << 7 << 16 << QByteArray("CAlarmWidget") << 7 << 6;
    QTest::newRow("no such layout") << "Monitor" << 64 << 35 << QByteArray("CMonitorWidget") << 64 << 25;
}

void tst_form::deckOfAForm()
{
    const ExpectedWarning sheet(SheetWarning);
    QFETCH(QString, kind);
    QFETCH(int, panes);
    QFETCH(int, layout);
    const auto widget = load<QFormBuilder>(form(kind, panes, layout));
    QVERIFY(widget);
    QCOMPARE(widget->metaObject()->className(), "FormDeck");
    CPaneDeck* deck = deckOf(widget.get());
    QVERIFY(deck);
    QFETCH(QByteArray, paneClass);
    QVERIFY(has(deck, paneClass));
    QTEST(paneCount(deck), "madePanes");
    QTEST(shownPanes(deck), "shown");
}

void tst_form::unknownKind()
{
    const auto widget = load<QFormBuilder>(form("Doorbell", 4, 4));
    QVERIFY(widget);
    widget->setProperty("kind", 4);
    widget->setProperty("kind", -1);
    QVERIFY(has(deckOf(widget.get()), "CMonitorWidget"));
}

void tst_form::loaderOfAnApplication()
{
    const ExpectedWarning sheet(SheetWarning);
    const auto widget = load<QUiLoader>(form("Playback", 16, 4));
    QVERIFY(widget);
    CPaneDeck* deck = deckOf(widget.get());
    QVERIFY(has(deck, "CPlaybackToolBar"));
    QCOMPARE(paneCount(deck), 16);
    QCOMPARE(deckOf(widget.get()), deck);
}

void tst_form::shownForm()
{
    QFile file(FORM);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto window = load<QFormBuilder>(file.readAll());
    QVERIFY(!window->findChild<CPaneDeck*>());
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    auto* deck = window->findChild<CPaneDeck*>();
    QVERIFY(deck && deck->isVisible());
    QCOMPARE(deck->size(), deck->parentWidget()->size());
    QCOMPARE(shownPanes(deck), 6);
    deck->ChangeFull(true);
    deck->ChangeFull(false);
    QTRY_COMPARE(deck->geometry(), deck->parentWidget()->rect());
}

void tst_form::changeInASignal()
{
    FormDeck place;
    place.resize(600, 400);
    place.show();
    const QPointer<CPaneDeck> first = place.deck();
    connect(first, &CPaneDeck::sig_activeWnd, &place, [&] {
        place.setPaneCount(9);
        place.setKind(FormDeck::Tour);
        place.setFirstLayout(9);
    });
    QTest::mouseClick(first->PaneWidget(2), Qt::LeftButton);
    QTRY_VERIFY(!first);
    QCOMPARE(paneCount(place.deck()), 9);
    QCOMPARE(shownPanes(place.deck()), 9);
    QTRY_COMPARE(place.deck()->size(), place.size());
    delete place.deck();
    QCOMPARE(shownPanes(place.deck()), 9);
}

int main(int argc, char** argv)
{
    return RunTests<tst_form>(argc, argv);
}

#include "tst_form.moc"
