#pragma once

#include <QSize>
#include <QString>

/// The filter graphs behind the scenes of the synthetic cameras.
namespace SceneRecipes {

constexpr int Count = 16;

/// A graph whose picture is the scene `number`, 0 to Count - 1, at the given size.
QString backdrop(int number, QSize size);
/// A graph of a few small pictures in a row: something that moves about in the scene.
QString sprite(int number, QSize size);

} // namespace SceneRecipes
