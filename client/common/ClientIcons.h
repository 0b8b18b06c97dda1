#pragma once

#include <QIcon>

/// The client's own small pictures, drawn for any display.
namespace ClientIcons {

QIcon Camera();
QIcon Site();

} // namespace ClientIcons
