#pragma once

#include <QIcon>

/// The playback bar's own icons, in the colour of the window's text.
namespace PlaybackIcons {

/// An arrow to a mark, to the right for the next one: time runs from left to right in every language.
QIcon mark(bool next);
QIcon backwards();
/// Strips below each other, and pictures with lines beside them.
QIcon strips();
QIcon list();

} // namespace PlaybackIcons
