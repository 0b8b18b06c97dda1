#pragma once

/// Whether the client starts with the user's session, by a file where desktops look for such.
namespace Autostart {

bool isOn();
/// False if the file can't be written or removed.
bool set(bool on);

} // namespace Autostart
