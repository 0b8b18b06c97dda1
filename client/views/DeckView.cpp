#include "views/DeckView.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <iterator>
#include <tuple>

namespace {

constexpr int Layouts = int(std::size(DeckView::NormalLayouts)); ///< of either kind
constexpr int LastScale = 10;
constexpr int MostText = 1000;
constexpr int MostPixels = 1 << 20;

/// Takes a whole number from `least` to `most`.
bool take(const QJsonValue& json, int least, int most, int* number)
{
    const double value = json.toDouble(least - 1.0);
    if (!json.isDouble() || value != std::floor(value) || value < least || value > most)
        return false;
    *number = int(value);
    return true;
}

bool take(const QJsonValue& json, QString* text)
{
    *text = json.toString();
    return json.isString() && text->size() <= MostText;
}

bool take(const QJsonValue& json, bool* answer)
{
    *answer = json.toBool();
    return json.isBool();
}

QJsonObject jsonOf(const ZoomView& zoom)
{
    return {{"x", zoom.part().x()}, {"y", zoom.part().y()}, {"factor", zoom.factor()}};
}

QJsonObject jsonOf(const PaneView& pane)
{
    if (pane.camera.isEmpty() && pane == PaneView())
        return {};
    QJsonObject json{{"camera", pane.camera}, {"name", pane.name}, {"scale", pane.scale}};
    if (!pane.zoom.isWhole())
        json.insert("zoom", jsonOf(pane.zoom));
    return json;
}

bool take(const QJsonObject& json, PaneView* pane)
{
    *pane = PaneView();
    if (json.isEmpty())
        return true;
    const QJsonObject zoom = json["zoom"].toObject();
    if (!zoom.isEmpty())
        pane->zoom = ZoomView({zoom["x"].toDouble(), zoom["y"].toDouble()}, zoom["factor"].toDouble());
    return take(json["camera"], &pane->camera) && take(json["name"], &pane->name) &&
           take(json["scale"], 0, LastScale, &pane->scale);
}

} // namespace

bool PaneView::operator==(const PaneView& other) const
{
    return std::tie(camera, name, scale, zoom) == std::tie(other.camera, other.name, other.scale, other.zoom);
}

bool DeckView::operator==(const DeckView& other) const
{
    return std::tie(name, isCustom, layout, page, panes) ==
           std::tie(other.name, other.isCustom, other.layout, other.page, other.panes);
}

QJsonObject DeckView::toJson() const
{
    QJsonArray array;
    for (const PaneView& pane : panes)
        array.append(jsonOf(pane));
    while (!array.isEmpty() && array.last().toObject().isEmpty())
        array.removeLast();
    return {{"name", name}, {"custom", isCustom}, {"layout", layout}, {"page", page}, {"panes", array}};
}

bool DeckView::fromJson(const QJsonObject& json)
{
    const QJsonArray array = json["panes"].toArray();
    panes = QVector<PaneView>(array.size());
    if (!json["panes"].isArray() || array.size() > MostPanes)
        return false;
    for (int i = 0; i < array.size(); ++i) {
        if (!array[i].isObject() || !take(array[i].toObject(), &panes[i]))
            return false;
    }
    return take(json["name"], &name) && name.size() <= MostLetters && take(json["custom"], &isCustom) &&
           take(json["layout"], 0, Layouts - 1, &layout) && take(json["page"], 0, MostPanes - 1, &page);
}

QJsonObject WindowView::toJson() const
{
    return {{"x", place.x()},   {"y", place.y()}, {"width", place.width()}, {"height", place.height()},
            {"screen", screen}, {"full", isFull}, {"view", view.toJson()}};
}

bool WindowView::fromJson(const QJsonObject& json)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const bool isPlaced =
        take(json["x"], -MostPixels, MostPixels, &x) && take(json["y"], -MostPixels, MostPixels, &y) &&
        take(json["width"], 1, MostPixels, &width) && take(json["height"], 1, MostPixels, &height);
    place = QRect(x, y, width, height);
    return isPlaced && take(json["screen"], &screen) && take(json["full"], &isFull) &&
           view.fromJson(json["view"].toObject());
}
