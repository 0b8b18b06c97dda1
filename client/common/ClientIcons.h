#pragma once

#include <QIcon>

/// The client's own small pictures, drawn for any display.
namespace ClientIcons {

QIcon camera();
QIcon site();

} // namespace ClientIcons
