#include "Rounds.h"
#include "timeline/CTimerLine.h"
#include "timeline/PlainStrip.h"

#include <QApplication>
#include <QTextStream>

#include <algorithm>
#include <list>

namespace {

using Table = QVector<unsigned int>;

constexpr int s_nDay = 86400;
constexpr int s_nVisible = 800;
constexpr int s_nHeight = 13;

Table Runs(int runs)
{
    Table table(s_nDay);
    for (int i = 0; i < s_nDay; ++i)
        table[i] = (qint64(i) * runs / s_nDay) % 2 ? 0xff2e7d32u : 0xff808080u;
    return table;
}

/// The strip as a frame that draws a rectangle for each run at every paint.
class PlainStrip : public QFrame
{
public:
    PlainStrip(QWidget* parent, const Table& table) : QFrame(parent), m_table(table) {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        DrawPlainStrip(painter, m_table, width(), height());
    }

private:
    Table m_table;
};

/// A strip of any width in a window that shows the middle of it.
struct Window
{
    void Show(QWidget* strip, int width)
    {
        strip->setGeometry((s_nVisible - width) / 2, 0, width, s_nHeight);
        viewport.resize(s_nVisible, s_nHeight);
        viewport.show();
        // The first repaint waits until the window has been exposed.
        QCoreApplication::processEvents();
    }

    QWidget viewport;
};

QVector<Contender> Contenders(const QVector<QWidget*>& strips, const QStringList& titles)
{
    QVector<Contender> contenders;
    for (int i = 0; i < strips.size(); ++i)
        contenders.append({titles.at(i), [strip = strips.at(i)] { strip->repaint(); }});
    return contenders;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::list<Window> windows;
    QVector<QWidget*> plains;
    QVector<QWidget*> lines;
    QStringList titles;
    for (int runs : {1, 200, s_nDay}) {
        for (int width : {800, 8000, 160000}) {
            const Table table = Runs(runs);
            titles.append(QString("%1 runs, %2 px wide").arg(runs).arg(width));
            Window& plainWindow = windows.emplace_back();
            plains.append(new PlainStrip(&plainWindow.viewport, table));
            plainWindow.Show(plains.last(), width);
            Window& window = windows.emplace_back();
            auto* line = new CTimerLine(&window.viewport, 0);
            line->SetCount(s_nDay);
            line->SetColors(table.constData());
            window.Show(line, width);
            lines.append(line);
        }
    }
    // Each way by itself: after a long paint of the other the caches would hold nothing of the short one.
    const QVector<double> plainTimes = MedianTimes(Contenders(plains, titles), 15);
    const QVector<double> times = MedianTimes(Contenders(lines, titles), 1001);
    QTextStream out(stdout);
    for (int i = 0; i < titles.size(); ++i) {
        out << QString("%1 every run %2 us, by columns %3 us, %4 x\n")
                   .arg(titles.at(i), -26)
                   .arg(plainTimes.at(i), 9, 'f', 1)
                   .arg(times.at(i), 5, 'f', 1)
                   .arg(plainTimes.at(i) / times.at(i), 7, 'f', 0);
    }
    const auto ends = std::minmax_element(times.cbegin(), times.cend());
    out << "worst / best by columns: " << *ends.second / *ends.first << "\n";
    return 0;
}
