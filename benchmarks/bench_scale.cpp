#include "Rounds.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "timeline/CTimerSlider.h"
#include "timeline/PlainScale.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>
#include <QVector>
#include <QWheelEvent>

namespace {

constexpr int s_nVisible = 800;
constexpr int s_nRatio = 200;
constexpr int s_nHeight = 50;

/// The scale as a frame that draws every tick and label at every paint.
class PlainSlider : public QFrame
{
public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        PlainScale::Draw(painter, width(), double(width()) / s_nVisible);
    }
};

void Wheel(CTimerSlider* slider, int notches)
{
    const QPoint pos(s_nVisible / 3 - slider->x(), 5);
    QWheelEvent event(pos, slider->mapToGlobal(pos), QPoint(), QPoint(0, 120 * notches), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(slider, &event);
    slider->repaint();
}

class PaintCounter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

/// Memory in use, in kB; 0 where the system doesn't tell.
qint64 ResidentMemory()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * 4;
}

void ShowEmpty(QWidget* viewport)
{
    viewport->resize(s_nVisible, s_nHeight);
    viewport->show();
    QCoreApplication::processEvents();
}

void CompareRepaints(QTextStream& out)
{
    CPlaybackSliderWidget day(nullptr);
    ShowEmpty(&day);
    auto* slider = day.findChild<CTimerSlider*>();
    Wheel(slider, s_nRatio - 1);
    for (QWidget* part : slider->findChildren<QWidget*>())
        part->hide();
    QWidget viewport;
    auto* plain = new PlainSlider(&viewport);
    plain->setGeometry(slider->geometry());
    ShowEmpty(&viewport);
    const QVector<Contender> contenders{{"every tick", [&] { plain->repaint(); }},
                                        {"ticks in sight", [&] { slider->repaint(); }}};
    const QVector<double> times = MedianTimes(contenders, 101);
    PrintTimes(QString("scale of %1 px, %2 visible").arg(slider->width()).arg(s_nVisible), contenders, times);
    out << "every tick / ticks in sight: " << times.at(0) / times.at(1) << "\n";
}

void WheelThereAndBack(QTextStream& out)
{
    CPlaybackSliderWidget day(nullptr);
    QVector<unsigned int> table(CPlaybackSliderWidget::DaySeconds);
    for (int i = 0; i < table.size(); ++i)
        table[i] = i / 7 % 3 ? 0xff808080u : 0xff2e7d32u;
    day.SetTimerPeriod(table.constData());
    ShowEmpty(&day);
    auto* slider = day.findChild<CTimerSlider*>();
    const qint64 before = ResidentMemory();
    qint64 most = before;
    PaintCounter paints;
    slider->installEventFilter(&paints);
    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i < 2 * s_nRatio - 1; ++i) {
        Wheel(slider, i < s_nRatio ? 1 : -1);
        most = qMax(most, i % s_nRatio == s_nRatio - 1 ? ResidentMemory() : 0);
    }
    const double seconds = timer.nsecsElapsed() * 1e-9;
    out << "wheel from 1 to " << s_nRatio << " and back: " << paints.count / seconds << " frames/s, "
        << most - before << " kB more at the end of the zoom than before it\n";
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    // The size that desktops give; the labels fit their boxes.
    QApplication::setFont(QFont("Sans Serif", 9));
    QTextStream out(stdout);
    CompareRepaints(out);
    out.flush();
    WheelThereAndBack(out);
    return 0;
}
