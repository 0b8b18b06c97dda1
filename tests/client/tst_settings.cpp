#include "cameras/CameraFile.h"
#include "cameras/CameraList.h"
#include "common/ClientOptions.h"
#include "common/KioskPassword.h"
#include "common/RelayLogin.h"
#include "settings/Autostart.h"
#include "settings/SettingsDialog.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"
#include "window/Kiosk.h"

#include <QAction>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>

namespace {

/// Answers the kiosk's question as soon as it is there.
void answer(const QString& password)
{
    QTimer::singleShot(0, qApp, [password] {
        auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return answer(password);
        dialog->setTextValue(password);
        dialog->accept();
    });
}

} // namespace

/// What is set for good, and who may leave a locked screen.
class tst_settings : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QSettings().clear(); }
    void keepsOnlyWhatChanged();
    void bearsAnyFile();
    void dialogGivesWhatItShows();
    void relayLoginStaysPrivate();
    void refusesAFolderThatCantBe();
    void autostartNamesThisProgram();
    void passwordIsKeptAsAHash();
    void kioskLetsOutByPasswordOnly();
};

void tst_settings::keepsOnlyWhatChanged()
{
    ClientOptions options = parseClientOptions({"--archive", "/trial", "--archive-days", "3"});
    const ClientSettings before = ClientSettings::of(options);
    QCOMPARE(before.archiveDir, QString("/trial"));
    QCOMPARE(before.archiveDays, 3);
    QVERIFY(before.usesDevices);
    ClientSettings after = before;
    after.usesDevices = false;
    after.saveChanges(before);
    QCOMPARE(ClientSettings::load().archiveDir, QString());
    QCOMPARE(ClientSettings::load().archiveDays, 0);
    QVERIFY(!ClientSettings::of(parseClientOptions({})).usesDevices);
    QVERIFY(ClientSettings::of(parseClientOptions({"--decode", "auto"})).usesDevices);
    QVERIFY(!before.hasArchiveOf(ClientSettings::load()));
}

void tst_settings::bearsAnyFile()
{
    QSettings kept;
    kept.setValue("style", "purple");
    kept.setValue("archive/gigabytes", -5);
    kept.setValue("archive/days", "1e99");
    const ClientSettings settings = ClientSettings::load();
    QCOMPARE(settings.style, 0);
    QCOMPARE(settings.archiveGigabytes, 1);
    QCOMPARE(settings.archiveDays, 0);
    kept.clear();
}

void tst_settings::dialogGivesWhatItShows()
{
    CameraList cameras;
    cameras.addSynthetic(3);
    SettingsDialog::Choice now;
    now.settings.style = 2;
    now.settings.archiveGigabytes = 77;
    now.settings.soundDevice = "one that has gone";
    now.alarms.offCameras = QStringList{cameras.at(1).about.id};
    now.showsLabels = false;
    now.startView = "Night";
    SettingsDialog dialog(now, cameras, {"Day", "Night"}, "/usual", "/usual", nullptr);
    const SettingsDialog::Choice choice = dialog.choice();
    QVERIFY(choice.settings.hasArchiveOf(now.settings));
    QCOMPARE(choice.settings.style, 2);
    QCOMPARE(choice.settings.soundDevice, now.settings.soundDevice);
    QCOMPARE(choice.alarms.offCameras, now.alarms.offCameras);
    QCOMPARE(choice.alarms.quietFrom, now.alarms.quietFrom);
    QCOMPARE(choice.startView, QString("Night"));
    QVERIFY(!choice.showsLabels && !choice.startsWithSession && choice.alarms.hasSound);
}

void tst_settings::relayLoginStaysPrivate()
{
    QString error;
    QVERIFY(RelayLogin::keep({"desk", "se:cret"}, &error));
    SettingsDialog::Choice now;
    now.relay = RelayLogin::load(&error).value();
    SettingsDialog dialog(now, CameraList(), {}, "/usual", "/usual", nullptr);
    QCOMPARE(dialog.choice().relay.password, QString("se:cret"));
    auto* user = dialog.findChild<QLineEdit*>("SettingsRelayUser");
    user->setText("another");
    dialog.accept();
    QVERIFY(dialog.findChild<QLabel*>("SettingsFault")->text().contains("password"));
    QTest::keyClicks(dialog.findChild<QLineEdit*>("SettingsRelayPassword"), "new");
    dialog.accept();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(RelayLogin::keep(dialog.choice().relay, &error));
    QFile file(QFileInfo(CameraFile::userPath()).path() + "/relay");
    QCOMPARE(int(file.permissions() & 0x77), 0);
    QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll() == "another:new\n");
    QVERIFY(RelayLogin::keep({}, &error) && !RelayLogin::load(&error) && error.isEmpty());
}

void tst_settings::refusesAFolderThatCantBe()
{
    SettingsDialog::Choice now;
    now.settings.snapshotDir = "/proc/none/such";
    SettingsDialog dialog(now, CameraList(), {}, "/usual", "/usual", nullptr);
    dialog.accept();
    QCOMPARE(dialog.result(), 0);
    QVERIFY(dialog.findChild<QLabel*>("SettingsFault")->text().contains("/proc/none/such"));
}

void tst_settings::autostartNamesThisProgram()
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                         "/autostart/tst_settings.desktop";
    QVERIFY(Autostart::set(true));
    QVERIFY(Autostart::isOn());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("Exec=\"" + QCoreApplication::applicationFilePath().toUtf8() + "\"\n"));
    QVERIFY(Autostart::set(false));
    QVERIFY(!file.exists());
}

void tst_settings::passwordIsKeptAsAHash()
{
    QVERIFY(!KioskPassword::isSet());
    QVERIFY(!KioskPassword::matches(QString()));
    KioskPassword::set("öpen sesame");
    QVERIFY(KioskPassword::matches("öpen sesame"));
    QVERIFY(!KioskPassword::matches("open sesame"));
    QVERIFY(!KioskPassword::matches(QString()));
    const QString hash = QSettings().value("kiosk/hash").toString();
    KioskPassword::set("öpen sesame");
    QVERIFY(hash != QSettings().value("kiosk/hash").toString());
    KioskPassword::set(QString());
    QVERIFY(!KioskPassword::isSet());
}

void tst_settings::kioskLetsOutByPasswordOnly()
{
    KioskPassword::set("key");
    QWidget window;
    auto* button = new QPushButton(&window);
    auto* action = new QAction(&window);
    action->setShortcut(Qt::CTRL | Qt::Key_Q);
    window.addAction(action);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy clicks(button, &QPushButton::clicked);
    QSignalSpy actions(action, &QAction::triggered);
    auto* kiosk = new Kiosk(&window);
    QSignalSpy left(kiosk, &Kiosk::left);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    QCOMPARE(clicks.count() + actions.count(), 0);
    answer("wrong");
    QVERIFY(!window.close());
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(window.isVisible());
    QCOMPARE(left.count(), 0);
    answer("key");
    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_COMPARE(left.count(), 1);
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(clicks.count(), 1);
    QVERIFY(window.close());
    KioskPassword::set(QString());
}

int main(int argc, char** argv)
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName("PaneDeck");
    QCoreApplication::setApplicationName("tst_settings");
    return RunTests<tst_settings>(argc, argv);
}

#include "tst_settings.moc"
