#include "DeckWall.h"
#include "Rounds.h"

#include "layouts/CSplitCatalog.h"

#include <QApplication>
#include <QBitmap>
#include <QLabel>

#include <memory>

namespace {

/// The outline of the alarm picture, found once more for each pane.
void MaskEachPane(const CPaneDeck& deck)
{
    const QString path = CSplitCatalog::Instance()->resourceDir + "/VideoWidget/ALARM.png";
    for (QLabel* label : deck.findChildren<QLabel*>()) {
        if (!label->mask().isEmpty())
            label->setMask(QPixmap(path).createHeuristicMask(true));
    }
}

void CompareBuilding(_WND_TYPE kind, const QString& title)
{
    std::unique_ptr<CPaneDeck> deck;
    const auto make = [&] { deck = std::make_unique<CPaneDeck>(nullptr, kind, WallFrames::COUNT); };
    const auto forget = [&] { deck.reset(); };
    const QVector<Contender> contenders = {
        {"deck", make, forget},
        {"deck with a mask made for each pane", [&] { make(), MaskEachPane(*deck); }, forget},
    };
    PrintTimes(title, contenders, MedianTimes(contenders, 60));
}

void CompareSwitching()
{
    const WallFrames frames;
    DeckWall wall(frames);
    const auto toOne = [&](DeckWall::Painting painting) {
        wall.SetFrames(painting);
        wall.Deck().SetShowWndNo(1);
        PaintPending();
    };
    const auto toAll = [&](DeckWall::Painting painting) {
        wall.SetFrames(painting);
        wall.Deck().SetShowWndNo(WallFrames::COUNT);
        PaintPending();
    };
    const QVector<Contender> contenders = {
        {"to one pane", [&] { toOne(DeckWall::OWN); }},
        {"to 64 panes", [&] { toAll(DeckWall::OWN); }},
        {"to one pane, painted the plain way", [&] { toOne(DeckWall::PLAIN); }},
        {"to 64 panes, painted the plain way", [&] { toAll(DeckWall::PLAIN); }},
    };
    PrintTimes("Switching a deck of 64 panes with frames", contenders, MedianTimes(contenders, 60));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CompareBuilding(WND_TYPE_ALARM, "Building an alarm deck of 64 panes");
    CompareBuilding(WND_TYPE_MONITOR, "Building a live deck of 64 panes");
    CompareSwitching();
    return 0;
}
