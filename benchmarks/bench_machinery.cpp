#include "DeckWall.h"
#include "Rounds.h"

#include <QApplication>
#include <QTextStream>

/// What Qt does around the paint of a label, while the label itself paints nothing.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const WallFrames frames;
    DeckWall wall(frames);
    const auto repaint = [&] { wall.Repaint(DeckWall::NOTHING); };
    // A label says what it covers with its first frame; the frames after it find that settled.
    const auto settle = [&](bool opaque) {
        wall.SetOpaque(opaque);
        repaint();
    };
    const QVector<Contender> contenders = {
        {"labels that cover what lies under them", repaint, [&] { settle(true); }},
        {"labels that don't", repaint, [&] { settle(false); }},
    };
    QVector<double> times = MedianTimes(contenders, 200);
    for (double& time : times)
        time /= WallFrames::COUNT;
    PrintTimes("Qt's own part in the repaint of one of 64 labels", contenders, times);
    QTextStream(stdout) << "  " << wall.Paints() << " paints\n";
    return 0;
}
