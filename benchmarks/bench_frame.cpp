#include "Rounds.h"

#include "frames/FramePainter.h"

#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

#include <cstring>
#include <vector>

namespace {

constexpr QSize FRAME(704, 576);
constexpr QSize SCREEN(1920, 1080);
quint64 g_sum = 0;

/// A screen of columns by columns panes, each with a frame of its own.
class Wall
{
public:
    explicit Wall(int columns, double ratio = 1)
        : m_columns(columns), m_pane(SCREEN / columns), m_screen(SCREEN * ratio, QImage::Format_RGB32),
          m_pixels(columns * columns, std::vector<uchar>(FRAME.width() * 3 * FRAME.height()))
    {
        for (size_t i = 0; i < m_pixels.size(); ++i)
            std::memset(m_pixels[i].data(), int(i) + 1, m_pixels[i].size());
        m_screen.fill(Qt::black);
        m_screen.setDevicePixelRatio(ratio);
    }

    void PaintPlans()
    {
        for (size_t i = 0; i < m_pixels.size(); ++i)
            PaintFrame(m_screen, Origin(i), View(i), m_pane);
    }

    void PaintPlain()
    {
        QPainter painter(&m_screen);
        for (size_t i = 0; i < m_pixels.size(); ++i) {
            painter.setTransform(QTransform::fromTranslate(Origin(i).x(), Origin(i).y()));
            PaintScaled(painter, View(i), m_pane);
        }
    }

    /// What no way can do without: each pixel of the screen is written, each row of a frame that shows is
    /// read.
    void WriteAndRead()
    {
        for (size_t i = 0; i < m_pixels.size(); ++i) {
            int last = -1;
            for (int y = 0; y < m_pane.height(); ++y) {
                uchar* line = m_screen.scanLine(Origin(i).y() + y) + Origin(i).x() * 4;
                std::memset(line, 0x55, m_pane.width() * 4);
                const int row = int((y + 0.5) * FRAME.height() / m_pane.height());
                if (row != last)
                    Read(m_pixels[i].data() + row * FRAME.width() * 3);
                last = row;
            }
        }
    }

private:
    QImage View(size_t i) const
    {
        return QImage(m_pixels[i].data(), FRAME.width(), FRAME.height(), QImage::Format_RGB888);
    }

    QPoint Origin(size_t i) const
    {
        return QPoint(int(i) % m_columns * m_pane.width(), int(i) / m_columns * m_pane.height());
    }

    static void Read(const uchar* row)
    {
        quint64 sum = 0;
        for (int i = 0; i < FRAME.width() * 3; i += 8) {
            quint64 word;
            std::memcpy(&word, row + i, sizeof word);
            sum += word;
        }
        g_sum += sum;
    }

    int m_columns;
    QSize m_pane;
    QImage m_screen;
    std::vector<std::vector<uchar>> m_pixels;
};

int AllocationsOf(const std::function<void()>& run)
{
    const int before = LargeAllocations();
    run();
    return LargeAllocations() - before;
}

void Compare(int columns, int rounds)
{
    Wall wall(columns);
    const QVector<Contender> contenders = {
        {"write the screen, read the rows", [&] { wall.WriteAndRead(); }},
        {"frames, ours", [&] { wall.PaintPlans(); }},
        {"frames, scaled() and drawImage()", [&] { wall.PaintPlain(); }},
    };
    const QVector<double> times = MedianTimes(contenders, rounds);
    PrintTimes(QString("%1 frames of 704x576 on 1920x1080").arg(columns * columns), contenders, times);
    QTextStream(stdout) << QString("  naive / ours %1 x, pictures allocated: ours %2, naive %3\n\n")
                               .arg(times[2] / times[1], 0, 'f', 1)
                               .arg(AllocationsOf(contenders[1].run))
                               .arg(AllocationsOf(contenders[2].run));
}

/// What a pixel costs on screens with more of them to one of a widget's.
void CompareRatios(int columns, int rounds)
{
    const double ratios[] = {1, 1.5, 2};
    Wall walls[] = {Wall(columns, ratios[0]), Wall(columns, ratios[1]), Wall(columns, ratios[2])};
    QVector<Contender> contenders;
    for (int i = 0; i < 3; ++i) {
        const QString name = QString("a device pixel ratio of %1").arg(ratios[i]);
        contenders.append({name, [&walls, i] { walls[i].PaintPlans(); }});
    }
    const QVector<double> times = MedianTimes(contenders, rounds);
    PrintTimes(QString("%1 frames of 704x576 on a widget of 1920x1080").arg(columns * columns), contenders,
               times);
    QTextStream out(stdout);
    for (int i = 1; i < 3; ++i) {
        const double perPixel = times[i] / times[0] / (ratios[i] * ratios[i]);
        out << QString("  per device pixel at %1: %2 x\n").arg(ratios[i]).arg(perPixel, 0, 'f', 2);
    }
    out << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    Compare(8, 300);
    Compare(4, 200);
    Compare(1, 100);
    for (int columns : {8, 4, 2, 1})
        CompareRatios(columns, 100);
    return g_sum == 1;
}
