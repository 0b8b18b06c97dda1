#include "archive/ArchiveIndex.h"
#include "archive/ArchiveReader.h"
#include "archive/DayColors.h"
#include "archive/KeyPictures.h"
#include "archive/PictureSteps.h"
#include "cameras/CameraHub.h"
#include "cameras/CameraList.h"
#include "cameras/ClientArchive.h"
#include "common/ClientSettings.h"
#include "common/EventLog.h"
#include "deck/CPaneDeck.h"
#include "engine/TestVideo.h"
#include "panes/DeckStreams.h"
#include "playback/CameraStrips.h"
#include "playback/MarkModel.h"
#include "playback/PlaybackTab.h"
#include "source/SourceThread.h"
#include "source/VideoSource.h"
#include "support/DeckTestCase.h"
#include "support/Mouse.h"
#include "support/RunTests.h"

#include <QDateTimeEdit>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QListView>
#include <QTemporaryDir>
#include <QToolButton>

namespace {

constexpr int Pictures = 20;
constexpr qint64 PieceMs = Pictures * TestVideo::StepMs;

/// Noon of a day long past, when the archive has three pieces, the last of them after a gap of a minute.
qint64 noon()
{
    return QDateTime(QDate(2024, 5, 6), QTime(12, 0)).toMSecsSinceEpoch();
}

QVector<qint64> starts()
{
    return {noon(), noon() + PieceMs, noon() + 60'000};
}

QVector<Span> marks()
{
    constexpr qint64 DayMs = 86'400'000;
    return {{Span::Alarm, noon() - DayMs, noon() - DayMs + 5000},
            {Span::Motion, noon() + 400, noon() + 700},
            {Span::Alarm, noon() + 1200, noon() + 1300},
            {Span::Alarm, noon() + 60'200, noon() + 60'600}};
}

} // namespace

/// A playback tab over a small archive, worked by keys and the pointer.
class tst_navigation : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stepsOverSeamAndGap();
    void keysGoAbout_data();
    void keysGoAbout();
    void playsBackwards();
    void tipTellsTheTime();
    void stripsFollowTheScale();
    void handlesSetWhatIsExported();
    void marksFlickerAsOne();
    void listLeadsToItsMarks();
    void newestPictureComesFirst();

private:
    void fillArchive();
    void openTab();
    QString shown() const { return m_tab->findChild<QLabel*>("PlaybackTime")->text(); }

    ExpectedWarning m_strip{"Specified color without alpha value but alpha given: 'rgb 255, 255, 255,255'"};
    ExpectedWarning m_button{"Could not create pixmap from"};
    std::unique_ptr<QTemporaryDir> m_directory;
    QVector<TrackPiece> m_pieces;
    std::unique_ptr<CameraList> m_cameras;
    std::unique_ptr<CameraHub> m_hub;
    std::unique_ptr<EventLog> m_log;
    std::unique_ptr<ClientArchive> m_archive;
    std::unique_ptr<PlaybackTab> m_tab;
};

void tst_navigation::init()
{
    DeckTestCase::init();
    QStandardPaths::setTestModeEnabled(true);
    m_directory = std::make_unique<QTemporaryDir>();
    m_pieces.clear();
    fillArchive();
}

void tst_navigation::cleanup()
{
    m_tab.reset();
    m_archive.reset();
    m_hub.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(waitForSourceThreads(PatienceMs));
    DeckTestCase::cleanup();
}

void tst_navigation::fillArchive()
{
    ArchiveIndex index;
    QString error;
    QVERIFY2(index.open(m_directory->path(), &error), qPrintable(error));
    QVERIFY(QDir(m_directory->path()).mkpath("Door"));
    for (const qint64 start : starts()) {
        const QString name = QString("Door/%1.mkv").arg(start);
        TestVideo::Recipe recipe{Pictures};
        recipe.reordered = 2;
        QVERIFY(TestVideo::write(m_directory->filePath(name), recipe));
        QVERIFY(index.add({name, "Door", start, start + PieceMs, 1000}));
        m_pieces.append({m_directory->filePath(name), start, start + PieceMs});
    }
    for (const Span& mark : marks())
        QVERIFY(index.addSpan("Door", mark));
}

void tst_navigation::openTab()
{
    ClientSettings settings;
    settings.archiveDir = m_directory->path();
    m_cameras = std::make_unique<CameraList>();
    m_cameras->add(*SourceAddress::parse("Door=" + m_directory->filePath("nothing.mkv")));
    m_hub = std::make_unique<CameraHub>(*m_cameras);
    m_log = std::make_unique<EventLog>();
    m_archive = std::make_unique<ClientArchive>(*m_cameras, m_hub.get(), m_log.get(), settings);
    m_tab = std::make_unique<PlaybackTab>(m_hub.get(), m_log.get(), m_archive.get());
    m_tab->resize(900, 600);
    m_tab->show();
    QVERIFY(QTest::qWaitForWindowActive(m_tab.get()));
    QTRY_COMPARE(shown(), QString("2024-05-06 12:00:00"));
}

void tst_navigation::stepsOverSeamAndGap()
{
    const SegmentTrack track(m_pieces);
    QVector<qint64> there, back;
    for (auto moment = std::make_optional(noon()); moment; moment = pictureAfter(track, *moment))
        there.append(*moment);
    for (auto moment = std::make_optional(there.last()); moment; moment = pictureBefore(track, *moment))
        back.prepend(*moment);
    QCOMPARE(there.size(), 3 * Pictures);
    QCOMPARE(back, there);
    QVERIFY(std::is_sorted(there.begin(), there.end()));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(there[i * Pictures], starts()[i]);
    QVERIFY(!pictureBefore(SegmentTrack(), noon()) && !pictureAfter(SegmentTrack(), noon()));
}

void tst_navigation::keysGoAbout_data()
{
    QTest::addColumn<QList<int>>("keys");
    QTest::addColumn<QString>("moment");
    QTest::newRow("end of the day") << QList<int>{Qt::Key_End} << "2024-05-06 12:01:00";
    QTest::newRow("and back") << QList<int>{Qt::Key_End, Qt::Key_Home} << "2024-05-06 12:00:00";
    QTest::newRow("next but one mark") << QList<int>{Qt::Key_N, Qt::Key_N} << "2024-05-06 12:01:00";
    QTest::newRow("none after the last")
        << QList<int>{Qt::Key_N, Qt::Key_N, Qt::Key_N} << "2024-05-06 12:01:00";
    QTest::newRow("mark of the day before") << QList<int>{Qt::Key_P} << "2024-05-05 12:00:00";
    QTest::newRow("a picture back over the gap")
        << QList<int>{Qt::Key_N,    Qt::Key_N,    Qt::Key_Left, Qt::Key_Left,
                      Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left}
        << "2024-05-06 12:00:01";
    QTest::newRow("plays to the end")
        << QList<int>{Qt::Key_End, Qt::Key_Up, Qt::Key_Space} << "2024-05-06 12:01:00";
}

void tst_navigation::keysGoAbout()
{
    QFETCH(QList<int>, keys);
    openTab();
    for (const int key : keys) {
        QTest::keyClick(m_tab->deck(), Qt::Key(key));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
    QFETCH(QString, moment);
    QTRY_COMPARE(shown(), moment);
}

void tst_navigation::playsBackwards()
{
    openTab();
    auto* button = m_tab->findChild<QToolButton*>("PlayBackwards");
    auto* speed = m_tab->findChild<QLabel*>("PlaybackSpeed");
    QTest::keyClick(m_tab->deck(), Qt::Key_End);
    QTRY_COMPARE(shown(), QString("2024-05-06 12:01:00"));
    QTest::keyClick(m_tab->deck(), Qt::Key_B);
    QTRY_COMPARE(speed->text(), QString(QChar(0x2212)) + "1X");
    QVERIFY(button->isChecked());
    QTRY_COMPARE(shown(), QString("2024-05-06 12:00:01"));
    QTRY_COMPARE(shown(), QString("2024-05-06 12:00:00"));
    QTRY_VERIFY(!button->isChecked());
    QTRY_COMPARE(m_tab->streams()->sourceAt(0)->frame()->wallMs, noon());
    QTest::mouseClick(button, Qt::LeftButton);
    QTRY_COMPARE(speed->text(), QString("1X"));
}

void tst_navigation::tipTellsTheTime()
{
    openTab();
    auto* scale = m_tab->findChild<QWidget*>("m_dayWidget");
    auto* tip = m_tab->findChild<QWidget*>("ScaleTip");
    auto* time = tip->findChild<QLabel*>("ScaleTime");
    QVERIFY(!tip->isVisible());
    Mouse::Wheel(scale, {scale->width() / 4, 5}, 120);
    Mouse::Move(scale, {scale->width() / 4, 5});
    QCOMPARE(time->text(), QString("06:00:00"));
    QVERIFY(tip->isVisible() && m_tab->rect().contains(tip->geometry()));
    Mouse::Leave(scale);
    QVERIFY(!tip->isVisible());
}

void tst_navigation::stripsFollowTheScale()
{
    openTab();
    auto* strips = m_tab->findChild<CameraStrips*>();
    const auto* scale = m_tab->findChild<QWidget*>("m_dayWidget");
    QTRY_VERIFY(strips->isVisible() && strips->height() > 10);
    Mouse::DoubleClick(strips, QPoint(scale->x() + scale->width() / 5, 5));
    QTRY_COMPARE(shown(), QString("2024-05-06 04:48:00"));
    const auto colorAt = [&](qint64 ms) {
        const int x = strips->mapFromGlobal(scale->mapToGlobal(QPoint())).x() +
                      int(scale->width() *
                          (QDateTime::fromMSecsSinceEpoch(ms).time().msecsSinceStartOfDay() / 86'400'000.0));
        return strips->grab().toImage().pixel(x, strips->rowRect(0).bottom() - 1);
    };
    const DayPalette palette;
    QTRY_COMPARE(colorAt(noon() + 60'000), palette.alarm); // of a pixel's minutes the alarm is what counts
    QCOMPARE(colorAt(noon() - 7'200'000), palette.empty);

    const int whole = scale->width();
    const QPoint middle = strips->rect().center();
    Mouse::Wheel(strips, middle, 120);
    QCOMPARE(scale->width(), 2 * whole);
    QCOMPARE(colorAt(noon() + 60'000), palette.alarm);
    const int left = scale->x();
    Mouse::Drag(strips, middle, {middle + QPoint(20, 0), middle + QPoint(40, 0)});
    QCOMPARE(scale->x(), left + 40);
}

void tst_navigation::handlesSetWhatIsExported()
{
    openTab();
    QTest::keyClick(m_tab->deck(), Qt::Key_E);
    auto* dialog = m_tab->findChild<QDialog*>("ExportDialog");
    QVERIFY(dialog && dialog->isVisible());
    auto* from = dialog->findChild<QDateTimeEdit*>("ExportFrom");
    auto* to = dialog->findChild<QDateTimeEdit*>("ExportTo");
    QCOMPARE(from->dateTime().msecsTo(to->dateTime()), qint64(10'000));
    auto* strips = m_tab->findChild<CameraStrips*>();
    QTRY_VERIFY(strips->height() > 10);
    const int width = m_tab->findChild<QWidget*>("m_dayWidget")->width();
    const auto x = [&](const QDateTimeEdit* field) {
        return QPoint(width * (field->time().msecsSinceStartOfDay() / 1000) / 86'400, 5);
    };
    to->setDateTime(from->dateTime().addSecs(7200));
    Mouse::Drag(strips, x(to), {QPoint(width * 20 / 24, 5)});
    QVERIFY(qAbs(to->time().secsTo(QTime(20, 0))) <= 86'400 / width);
    Mouse::Drag(strips, x(from), {QPoint(width - 1, 5)}); // no further than the other one
    QCOMPARE(from->dateTime().secsTo(to->dateTime()), qint64(1));
    dialog->reject();
}

void tst_navigation::marksFlickerAsOne()
{
    const auto span = [](Span::Kind kind, qint64 from, qint64 to) { return Span{kind, from, to}; };
    const DayRow door{"Door",
                      0,
                      {},
                      {span(Span::Motion, 1000, 2000), span(Span::Alarm, 1500, 1600),
                       span(Span::Motion, 4000, 9000), span(Span::Motion, 20'000, 21'000)}};
    const DayRow yard{"Yard", 1, {}, {span(Span::Motion, 1200, 1300)}};
    QStringList found;
    for (const MarkModel::Mark& mark : MarkModel::marksOf({door, yard}))
        found.append(QString("%1 %2-%3").arg(mark.camera).arg(mark.span.startMs).arg(mark.span.endMs));
    QCOMPARE(found, QStringList({"Door 1000-9000", "Yard 1200-1300", "Door 20000-21000"}));
}

void tst_navigation::listLeadsToItsMarks()
{
    openTab();
    auto* list = m_tab->findChild<QListView*>("MarkList");
    QTRY_COMPARE(list->model()->rowCount(), 2);
    const QModelIndex last = list->model()->index(1, 0);
    const auto picture = [&] { return last.data(Qt::DecorationRole).value<QPixmap>().toImage(); };
    QTRY_VERIFY(TestVideo::number(picture().convertToFormat(QImage::Format_RGB888)) > 0);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(last).center());
    QTRY_COMPARE(shown(), QString("2024-05-06 12:01:00"));
}

void tst_navigation::newestPictureComesFirst()
{
    const auto paths = std::make_shared<ArchivePaths>(m_directory->path());
    KeyPictures maker([paths] { return std::make_unique<ArchiveReader>(paths); }, {32, 32}, 2);
    QMap<qint64, bool> made; // whether there is a picture
    connect(&maker, &KeyPictures::made, this,
            [&](const QString&, qint64 ms, const QImage& picture) { made.insert(ms, !picture.isNull()); });
    for (int i = 0; i < 50; ++i)
        maker.ask("Door", noon() + i);
    const qint64 gap = noon() + 30'000;
    maker.ask("Door", gap);
    QTRY_VERIFY(made.contains(noon() + 49) && made.contains(gap));
    QVERIFY(made.size() < 50);
    QVERIFY(made[noon() + 49] && !made[gap]);
}

int main(int argc, char** argv)
{
    return RunTests<tst_navigation>(argc, argv);
}

#include "tst_navigation.moc"
