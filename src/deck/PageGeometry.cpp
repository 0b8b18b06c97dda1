#include "deck/PageGeometry.h"

namespace {

constexpr int LiveBarHeight = 50;
constexpr double LongestSide = 1 << 24;

bool HasLiveBar(int kind)
{
    return kind == WND_TYPE_MONITOR || kind == WND_TYPE_TOUR;
}

int Truncated(double value)
{
    return int(qBound(-LongestSide, value, LongestSide));
}

} // namespace

DeckGeometry GeometryOfDeck(const DeckState& state, const QSize& size)
{
    const bool playback = state.kind == WND_TYPE_PLAYBACK;
    const int inset = playback && state.showMode == WND_SHOW_ENLARGED ? 1 : 0;
    if (state.fullScreen)
        return {QRect(0, 0, 0, 0), QRect(QPoint(inset, inset), size)};
    if (HasLiveBar(state.kind)) {
        const int height = size.height() - LiveBarHeight;
        return {QRect(0, height, size.width(), LiveBarHeight), QRect(0, 0, size.width(), height)};
    }
    if (playback) {
        const int height = size.height() - state.playbackBarHeight;
        return {QRect(QPoint(0, height + 1), size), QRect(inset, inset, size.width(), height)};
    }
    return {QRect(), QRect(QPoint(0, 0), size)};
}

QRect PlaceRect(const SplitLayout& layout, int place, const QSize& display)
{
    if (place < 0 || place >= layout.cells.size() || layout.rows < 1 || layout.cols < 1)
        return QRect();
    const double unitWidth = double(display.width()) / layout.cols;
    const double unitHeight = double(display.height()) / layout.rows;
    const SplitCell& cell = layout.cells.at(place);
    QRect rect;
    rect.setLeft(Truncated(unitWidth * cell.y1));
    rect.setRight(Truncated(unitWidth * cell.y2));
    rect.setTop(Truncated(unitHeight * cell.x1));
    rect.setBottom(Truncated(unitHeight * cell.x2));
    return rect.adjusted(1, 1, -1, -1);
}

int PlaceUnder(const QList<QRect>& places, const QPoint& point)
{
    for (int place = 0; place < places.size(); ++place) {
        if (places.at(place).contains(point))
            return place;
    }
    return -1;
}

int PageCount(int panes, int panesOnPage)
{
    return panesOnPage > 0 ? panes / panesOnPage : 0;
}
