#include "synthetic/SceneArt.h"

#include "source/MediaFeed.h"
#include "source/SourceLink.h"
#include "synthetic/SceneRecipes.h"

#include <array>

namespace {

constexpr int SpriteSteps = 24;

/// The first pictures of a graph; fewer than `count` on a failure.
QVector<QImage> render(const QString& graph, int count, QString* error)
{
    SourceLink nobody(nullptr);
    MediaFeed feed(*SourceAddress::parse("scene=lavfi:" + graph), nobody);
    QVector<QImage> pictures;
    bool going = feed.open();
    while (going && pictures.size() < count) {
        going = feed.advance() == SourceFeed::Step::Picture;
        const FramePtr frame = going ? feed.picture() : nullptr;
        if (frame)
            pictures.append(frame->image().copy());
    }
    if (pictures.size() < count)
        *error = "cannot draw the scene: " + feed.error();
    return pictures;
}

std::shared_ptr<const SceneArt> draw(int number, QString* error)
{
    const auto art = std::make_shared<SceneArt>();
    const QVector<QImage> backdrop = render(SceneRecipes::backdrop(number, SceneArt::WholeSize), 1, error);
    art->sprite = render(SceneRecipes::sprite(number, SceneArt::SpriteSize), SpriteSteps, error);
    if (backdrop.isEmpty() || art->sprite.size() < SpriteSteps)
        return nullptr;
    art->backdrop = backdrop.first();
    return art;
}

struct Shelf
{
    std::mutex mutex;
    std::weak_ptr<const SceneArt> art;
};

} // namespace

std::shared_ptr<const SceneArt> SceneArt::scene(int number, QString* error)
{
    static std::array<Shelf, SceneRecipes::Count> shelves;
    Shelf& shelf = shelves.at(size_t(number));
    const std::lock_guard lock(shelf.mutex);
    std::shared_ptr<const SceneArt> art = shelf.art.lock();
    if (!art) {
        art = draw(number, error);
        shelf.art = art;
    }
    return art;
}
