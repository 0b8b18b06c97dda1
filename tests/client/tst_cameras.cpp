#include "SimulatedDevice.h"
#include "cameras/CameraFile.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/CameraTree.h"
#include "cameras/OnvifCamera.h"
#include "cameras/OnvifHub.h"
#include "manager/CameraActions.h"
#include "manager/FindCamerasDialog.h"
#include "onvif/DeviceSearch.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>

class tst_cameras : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsWhatIsNew();
    void keepsWhatItIsTold();
    void refusesAWholeChange();
    void keepsTheArchiveNames();
    void givesANewSourceToANewAddress();
    void treeFollows();
    void dropChangesTheGroup();
    void loginGoesToWhoIsMeant();
    void stopsWhatTurns_data();
    void stopsWhatTurns();

private:
    QString path() const { return m_directory->filePath("cameras.json"); }

    QScopedPointer<QTemporaryDir> m_directory;
    QScopedPointer<CameraList> m_list;
    QString m_error;
};

namespace {

CameraDescription camera(const QString& name, const QString& url = "synthetic:1")
{
    CameraDescription about;
    about.id = newCameraId();
    about.name = name;
    about.mainUrl = url;
    return about;
}

} // namespace

void tst_cameras::init()
{
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    m_directory.reset(new QTemporaryDir);
    m_list.reset(new CameraList);
    QVERIFY2(m_list->keepIn(path(), &m_error), qPrintable(m_error));
}

void tst_cameras::tellsWhatIsNew()
{
    QStringList news;
    connect(m_list.data(), &CameraList::added, [&](auto* one) { news << "added " + one->name; });
    connect(m_list.data(), &CameraList::changed,
            [&](auto* one, const auto& before) { news << before.name + " is " + one->name; });
    connect(m_list.data(), &CameraList::aboutToBeRemoved, [&](auto* one) {
        QVERIFY(m_list->find(one->name));
        news << "goes " + one->name;
    });
    connect(m_list.data(), &CameraList::removed, [&](auto* one) {
        QVERIFY(!m_list->find(one->name));
        news << "gone " + one->name;
    });
    QVector<CameraDescription> cameras{camera("A"), camera("B"), camera("C")};
    QVERIFY2(m_list->setDescriptions(cameras, &m_error), qPrintable(m_error));
    const CameraRecord* b = m_list->find("B");
    const CameraRecord* c = m_list->find("C");
    cameras = m_list->descriptions();
    cameras[1].name = "D";
    cameras.move(1, 0);
    cameras.removeLast();
    QVERIFY(m_list->setDescriptions(cameras, &m_error));
    QCOMPARE(news, QStringList({"added A", "added B", "added C", "goes C", "gone C", "B is D"}));
    QCOMPARE(&m_list->at(0), b);
    QCOMPARE(c->name, QString("C")); // whoever still holds it reads no wild memory
}

void tst_cameras::keepsWhatItIsTold()
{
    CameraDescription about = camera("A", "rtsp://h/s");
    about.user = "me";
    QVERIFY(m_list->setDescriptions({about}, &m_error, {{about.id, "s3cret"}}));
    CameraList again;
    QVERIFY2(again.keepIn(path(), &m_error), qPrintable(m_error));
    QCOMPARE(again.at(0).address->location(), QString("rtsp://me:s3cret@h/s"));
    QFile file(path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(!file.readAll().contains("s3cret"));
    QFile passwords(m_directory->filePath("passwords.json"));
    QCOMPARE(passwords.permissions() & 0x77, QFile::Permissions());
    QVERIFY(again.setDescriptions({}, &m_error));
    QVERIFY(passwords.open(QIODevice::ReadOnly));
    QVERIFY(!passwords.readAll().contains("s3cret"));
}

void tst_cameras::refusesAWholeChange()
{
    QVERIFY(m_list->setDescriptions({camera("A")}, &m_error));
    QSignalSpy added(m_list.data(), &CameraList::added);
    QVERIFY(!m_list->setDescriptions({camera("B"), camera("B")}, &m_error));
    QCOMPARE(m_error, QString("two cameras are called B"));
    QVERIFY(QFile::remove(path()) && QDir().mkpath(path() + "/in the way"));
    QVERIFY(!m_list->setDescriptions({camera("C")}, &m_error));
    QVERIFY(m_error.startsWith("cannot write "));
    QCOMPARE(m_list->count(), 1);
    QCOMPARE(m_list->at(0).name, QString("A"));
    QVERIFY(added.isEmpty());
    CameraList refused;
    QVERIFY(!refused.keepIn(path(), &m_error));
    const QString fault = m_error;
    QVERIFY(!refused.setDescriptions({camera("C")}, &m_error));
    QCOMPARE(m_error, fault);
}

/// A camera that takes over another's old name has recordings of its own.
void tst_cameras::keepsTheArchiveNames()
{
    CameraDescription door = camera("Door");
    QVERIFY(m_list->setDescriptions({door}, &m_error));
    door = m_list->descriptions().first();
    door.name = "Gate";
    QVERIFY(m_list->setDescriptions({door, camera("Door")}, &m_error));
    QCOMPARE(m_list->find("Gate")->about.archiveName(), QString("Door"));
    QCOMPARE(m_list->find("Door")->about.archiveName(), QString("Door (2)"));
}

void tst_cameras::givesANewSourceToANewAddress()
{
    CameraHub hub(*m_list);
    QVERIFY(m_list->setDescriptions({camera("A")}, &m_error));
    CameraDescription about = m_list->descriptions().first();
    const auto source = hub.acquire(m_list->at(0));
    about.group = "Yard";
    QVERIFY(m_list->setDescriptions({about}, &m_error));
    QCOMPARE(hub.acquire(m_list->at(0)), source);
    about.mainUrl = "synthetic:2";
    QVERIFY(m_list->setDescriptions({about}, &m_error));
    QVERIFY(hub.acquire(m_list->at(0)) != source);
    about.isEnabled = false;
    QVERIFY(m_list->setDescriptions({about}, &m_error));
    QVERIFY(!hub.acquire(m_list->at(0)));
}

void tst_cameras::treeFollows()
{
    CameraTree tree(*m_list, nullptr);
    CameraDescription about = camera("A");
    about.group = "Home / Yard";
    QVERIFY(m_list->setDescriptions({about, camera("B")}, &m_error));
    QTRY_COMPARE(tree.topLevelItemCount(), 2);
    QTreeWidgetItem* row = tree.topLevelItem(0)->child(0)->child(0);
    QCOMPARE(tree.topLevelItem(0)->text(0) + tree.topLevelItem(0)->child(0)->text(0) + row->text(0),
             QString("HomeYardA"));
    tree.setCurrentItem(row);
    QVERIFY(m_list->setDescriptions({m_list->descriptions().first()}, &m_error));
    QTRY_COMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(CameraTree::cameraOf(tree.currentItem()), &m_list->at(0));
}

void tst_cameras::dropChangesTheGroup()
{
    QVector<CameraDescription> cameras{camera("A"), camera("B")};
    cameras[0].group = "Hall";
    QVERIFY(m_list->setDescriptions(cameras, &m_error));
    CameraTree tree(*m_list, nullptr);
    CameraActions actions(m_list.data(), &tree);
    QSignalSpy told(&actions, &CameraActions::told);
    Q_EMIT tree.dropped(cameras[0].id, "Yard/Gate");
    QCOMPARE(m_list->find("A")->about.group, QString("Hall")); // the drag is still there
    QTRY_COMPARE(m_list->find("A")->about.group, QString("Yard/Gate"));
    QTRY_COMPARE(tree.topLevelItem(0)->text(0), QString("Yard"));
    Q_EMIT tree.dropped("one that has gone", "Hall");
    Q_EMIT tree.dropped(cameras[0].id, QString());
    QTRY_COMPARE(m_list->find("A")->about.group, QString());
    QCOMPARE(told.size(), 2);
}

/// Whoever is in the network may answer a search. Nobody does here, where no event is waited for.
void tst_cameras::loginGoesToWhoIsMeant()
{
    FindCamerasDialog dialog(m_list.data(), nullptr);
    auto* search = dialog.findChild<DeviceSearch*>();
    auto* list = dialog.findChild<QTreeWidget*>("FoundDevices");
    const auto chosenAfter = [&](const QString& host) {
        Q_EMIT search->found({host, host, {}, QUrl("http://" + host + "/onvif/device_service")});
        QString chosen;
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            chosen += list->topLevelItem(i)->checkState(0) == Qt::Checked ? '+' : '-';
        return chosen;
    };
    QCOMPARE(chosenAfter("10.0.0.1"), QString("+"));
    QCOMPARE(chosenAfter("10.0.0.2"), QString("--"));
    list->topLevelItem(1)->setCheckState(0, Qt::Checked);
    dialog.findChild<QLineEdit*>("DeviceAddress")->setText("10.0.0.3");
    dialog.findChild<QPushButton*>("AddAddress")->click();
    QCOMPARE(chosenAfter("10.0.0.4"), QString("-++-"));
}

void tst_cameras::stopsWhatTurns_data()
{
    QTest::addColumn<QString>("fate");
    for (const char* fate :
         {"removed", "removed at the end", "switched off", "another profile", "program left"})
        QTest::newRow(fate) << fate;
}

/// A camera is held in a direction when it goes.
void tst_cameras::stopsWhatTurns()
{
    QFETCH(QString, fate);
    if (!SoapLine::isBuilt())
        QSKIP("this build has no ONVIF");
    SimulatedDevice device({});
    CameraDescription about = camera("Yard");
    about.ptz = CameraDescription::Ptz::Onvif;
    about.onvifAddress = device.address();
    about.onvifMainProfile = "main1";
    QVERIFY(m_list->setDescriptions({about}, &m_error));
    OnvifHub hub(*m_list);
    QTRY_VERIFY(device.asked().contains("PullMessages"));
    hub.find(m_list->at(0))->steer(4, true);
    QTRY_COMPARE(device.told(), QStringList{"ContinuousMove 0.5 0 0"});
    about.isEnabled = fate != "switched off";
    if (fate == "another profile")
        about.onvifMainProfile = "small1";
    if (fate == "program left")
        Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    else
        QVERIFY(m_list->setDescriptions(
            fate.startsWith("removed") ? QVector<CameraDescription>() : QVector{about}, &m_error));
    if (fate == "removed at the end") {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QApplication::exec();
    }
    QTRY_COMPARE(device.told().mid(1, 1), QStringList{"Stop"});
    QTRY_COMPARE(device.asked().contains("Unsubscribe"), fate != "program left");
}

int main(int argc, char** argv)
{
    return RunTests<tst_cameras>(argc, argv);
}

#include "tst_cameras.moc"
