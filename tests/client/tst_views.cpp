#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "common/EventLog.h"
#include "common/VisibleTimer.h"
#include "deck/CPaneDeck.h"
#include "panes/DeckStreams.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "tabs/TourTab.h"
#include "views/ViewList.h"
#include "window/WindowPlace.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>

class tst_views : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void keepsAllOfAView();
    void changesNamesAndOrder();
    void refusesWhatItCannotRead_data();
    void refusesWhatItCannotRead();
    void leavesAllWhenItCannotWrite();
    void windowsFitTheirScreen_data();
    void windowsFitTheirScreen();
    void toursCamerasAndViews();
};

namespace {

DeckView viewOf(const QString& name)
{
    DeckView view;
    view.name = name;
    view.isCustom = true;
    view.layout = 3;
    view.page = 1;
    view.panes = {
        {"a", "Door", 7, ZoomView({0.25, 0.5}, 4)}, PaneView(), {"b", QString(300, QChar(0x5927)), 0, {}}};
    return view;
}

QByteArray fileOf(const QByteArray& views, const QByteArray& version = "1")
{
    return "{\"version\":" + version + ",\"last\":\"\",\"windows\":[],\"views\":[" + views + "]}";
}

QByteArray textOf(const DeckView& view, const QString& key = {}, const QJsonValue& value = {})
{
    QJsonObject json = view.toJson();
    if (!key.isEmpty())
        json[key] = value;
    return QJsonDocument(json).toJson();
}

void writeTo(const QString& path, const QByteArray& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void tst_views::keepsAllOfAView()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("deep/views.json");
    QString error;
    ViewList views(path);
    QVERIFY(views.read(&error) && !views.wasKept());
    const WindowView window{{-1400, 20, 800, 600}, "HDMI-1", true, viewOf("")};
    QVERIFY(views.keep(viewOf("Night <b>&amp; day"), &error));
    QVERIFY(views.setLast("Night <b>&amp; day", &error) && views.setStart("Night <b>&amp; day", &error));
    QVERIFY(views.setWindows({window}, &error));
    ViewList again(path);
    QVERIFY(again.read(&error) && again.wasKept());
    QCOMPARE(again.last(), QString("Night <b>&amp; day"));
    QCOMPARE(again.start(), again.last());
    QVERIFY(again.views() == views.views());
    QCOMPARE(again.windows().size(), 1);
    QCOMPARE(again.windows()[0].place, window.place);
    QVERIFY(again.windows()[0].isFull && again.windows()[0].view == window.view);
}

void tst_views::changesNamesAndOrder()
{
    const QTemporaryDir directory;
    QString error;
    ViewList views(directory.filePath("views.json"));
    for (const char* name : {"A", "B", "C"})
        QVERIFY(views.keep(viewOf(name), &error));
    QVERIFY(views.setLast("C", &error) && views.setStart("C", &error) && !views.rename("A", "B", &error));
    QVERIFY(!views.rename("A", " ", &error) && !views.rename("A", QString(61, 'x'), &error));
    QVERIFY(views.rename("C", "Z", &error) && views.move("Z", -1, &error) && views.move("A", -1, &error));
    QCOMPARE(views.last() + views.start(), QString("ZZ")); // they go with their view
    QVERIFY(views.remove("Z", &error) && views.last().isEmpty() && views.start().isEmpty());
    QCOMPARE(views.views().size(), 2);
    DeckView other = viewOf("A");
    other.page = 0;
    QVERIFY(views.keep(other, &error));
    QCOMPARE(views.views()[0].page, 0);
    QCOMPARE(views.views().size(), 2);
}

void tst_views::refusesWhatItCannotRead_data()
{
    const DeckView view = viewOf("A");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("\0\xff{[", 4);
    QTest::newRow("a list") << QByteArray("[1]");
    QTest::newRow("cut short") << fileOf(textOf(view)).chopped(3);
    QTest::newRow("a newer version") << fileOf(textOf(view), "2");
    QTest::newRow("two of one name") << fileOf(textOf(view) + ',' + textOf(view));
    QTest::newRow("no name") << fileOf(textOf(view, "name", ""));
    QTest::newRow("a layout that is none") << fileOf(textOf(view, "layout", 10));
    QTest::newRow("half a layout") << fileOf(textOf(view, "layout", 1.5));
    QTest::newRow("a page beyond numbers") << fileOf(textOf(view, "page", 1e300));
    QTest::newRow("panes that are none") << fileOf(textOf(view, "panes", "many"));
    QTest::newRow("nested deeper than sense") << QByteArray(100'000, '[');
    QJsonArray panes;
    for (int i = 0; i < 65; ++i)
        panes.append(QJsonObject());
    QTest::newRow("too many panes") << fileOf(textOf(view, "panes", panes));
}

/// It lies there as it was, also after somebody has tried to keep a view.
void tst_views::refusesWhatItCannotRead()
{
    QFETCH(QByteArray, text);
    const QTemporaryDir directory;
    const QString path = directory.filePath("views.json");
    writeTo(path, text);
    QString error;
    ViewList views(path);
    QVERIFY(!views.read(&error));
    QVERIFY(error.contains(path));
    QVERIFY(views.views().isEmpty());
    QVERIFY(!views.keep(viewOf("B"), &error));
    QCOMPARE(contentOf(path), text);
}

void tst_views::leavesAllWhenItCannotWrite()
{
    const QTemporaryDir directory;
    writeTo(directory.filePath("file"), "x");
    QString error;
    ViewList views(directory.filePath("file/views.json"));
    QVERIFY(views.read(&error));
    QVERIFY(!views.keep(viewOf("A"), &error) && views.views().isEmpty() && views.last().isEmpty());
    ViewList place(directory.path()); // a directory in the file's place
    QVERIFY(!place.read(&error));
}

void tst_views::windowsFitTheirScreen_data()
{
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<QRect>("room");
    QTest::newRow("larger") << QRect(0, 0, 1280, 800) << QRect(0, 0, 933, 600);
    QTest::newRow("on a screen that is gone") << QRect(3000, -2000, 800, 600) << QRect(0, 0, 1400, 900);
    QTest::newRow("on the second screen") << QRect(100, 100, 5000, 500) << QRect(1400, 0, 1280, 1024);
}

void tst_views::windowsFitTheirScreen()
{
    QFETCH(QRect, wanted);
    QFETCH(QRect, room);
    const QRect place = fitted(wanted, room);
    QVERIFY(room.contains(place));
    QCOMPARE(fitted(place, room), place);
    QVERIFY(place.width() == wanted.width() || place.width() > room.width() - 20);
}

/// What the pointer is on stays; a view that is gone is passed over.
void tst_views::toursCamerasAndViews()
{
    QStandardPaths::setTestModeEnabled(true);
    CameraList cameras;
    cameras.addSynthetic(3);
    CameraHub hub(cameras);
    EventLog log;
    const QTemporaryDir directory;
    ViewList views(directory.filePath("views.json"));
    QString error;
    DeckView view;
    view.name = "Two";
    view.layout = 1;
    view.panes = {PaneView(), {cameras.at(2).about.id, "", 1, {}}};
    QVERIFY(views.keep(view, &error));
    TourPlan plan;
    plan.panes = 1;
    plan.seconds = TourPlan::MostSeconds;
    const auto begin = [&] {
        plan.save();
        auto tab = std::make_unique<TourTab>(cameras, &hub, &log, &views);
        tab->resize(500, 400);
        tab->show();
        return tab;
    };
    auto tab = begin();
    const auto step = [&] { QMetaObject::invokeMethod(tab->findChild<VisibleTimer*>(), "timeout"); };
    QTRY_COMPARE(tab->streams()->cameraAt(0), &cameras.at(0));
    step();
    QCOMPARE(tab->streams()->cameraAt(0), &cameras.at(1));
    tab->deck()->PaneWidget(0)->setAttribute(Qt::WA_UnderMouse);
    step();
    QCOMPARE(tab->streams()->cameraAt(0), &cameras.at(1));

    plan.showsViews = true;
    plan.views = QStringList{"gone", "Two"};
    tab = begin();
    QTRY_COMPARE(tab->streams()->cameraAt(1), &cameras.at(2));
    step();
    QVERIFY(!tab->streams()->cameraAt(0) && tab->streams()->cameraAt(1));
    tab.reset();
    TourPlan().save();
}

int main(int argc, char** argv)
{
    return RunTests<tst_views>(argc, argv);
}

#include "tst_views.moc"
