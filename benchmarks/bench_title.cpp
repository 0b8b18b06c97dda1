#include "DeckWall.h"
#include "Rounds.h"

#include <QApplication>

namespace {

constexpr int PanesOnPage = 9;
constexpr int TitlePane = 4;

/// What the pointer's way over a wall of playing panes costs, beside one frame of the pane under it.
void CompareTitle(DeckWall& wall)
{
    CPaneDeck& deck = wall.Deck();
    auto* label = static_cast<QWidget*>(deck.GetHWND(TitlePane));
    const auto show = [&] { deck.showTitle(TitlePane), PaintPending(); };
    const auto hide = [&] { deck.hideTitle(TitlePane), PaintPending(); };
    int changes = 0;
    const auto changeText = [&] {
        deck.SetTitle(TitlePane, QString::number(++changes));
        PaintPending();
    };
    const auto frame = [&] { label->update(), PaintPending(); };
    const QVector<Contender> contenders = {
        {"a frame of the pane", frame, hide},
        {"a frame under the title bar", frame, show},
        {"show the title bar", show, hide},
        {"change its text", changeText, show},
        {"hide it, and paint the frame that it covered", hide, show},
    };
    PrintTimes("The title bar over a playing pane, one of nine", contenders, MedianTimes(contenders, 200));
}

void ComparePageSteps(DeckWall& wall)
{
    const auto step = [&](DeckWall::Painting painting) {
        wall.SetFrames(painting);
        wall.Deck().OnNextPage();
        PaintPending();
    };
    const auto back = [&] { wall.Deck().OnPreviePage(), PaintPending(); };
    const QVector<Contender> contenders = {
        {"page step", [&] { step(DeckWall::OWN); }, back},
        {"page step, painted the plain way", [&] { step(DeckWall::PLAIN); }, back},
    };
    PrintTimes("A page step of nine panes with frames", contenders, MedianTimes(contenders, 60));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const WallFrames frames;
    DeckWall wall(frames);
    wall.Deck().SetShowWndNo(PanesOnPage);
    wall.SetFrames(DeckWall::OWN);
    PaintPending();
    CompareTitle(wall);
    ComparePageSteps(wall);
    return 0;
}
