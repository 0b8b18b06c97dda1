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
    const QVector<Contender> contenders = {
        {"labels that cover what lies under them", [&] { wall.Repaint(DeckWall::NOTHING, true); }},
        {"labels that don't", [&] { wall.Repaint(DeckWall::NOTHING, false); }},
    };
    QVector<double> times = MedianTimes(contenders, 200);
    for (double& time : times)
        time /= WallFrames::COUNT;
    PrintTimes("Qt's own part in the repaint of one of 64 labels", contenders, times);
    QTextStream(stdout) << "  " << wall.Paints() << " paints\n";
    return 0;
}
