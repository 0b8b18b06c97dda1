#pragma once

#include <QImage>
#include <QVector>

#include <memory>

/// The pictures that a synthetic camera is made of, drawn once by libavfilter and shared by all cameras of
/// the same scene.
struct SceneArt
{
    static constexpr QSize WholeSize{1056, 864};
    static constexpr QSize SpriteSize{96, 72};

    QImage backdrop;        ///< RGB888, WholeSize: all that the camera can turn to
    QVector<QImage> sprite; ///< RGB888, SpriteSize: the steps of something that moves

    /// Scene 0 to SceneRecipes::Count - 1, kept as long as somebody has it. The first asking may take a tenth
    /// of a second. Null on a failure, with one line in `error`. Any thread.
    static std::shared_ptr<const SceneArt> scene(int number, QString* error);
};
