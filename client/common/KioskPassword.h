#pragma once

#include <QString>

/// What lets one leave a locked client. Kept is only what can't be turned back into it.
namespace KioskPassword {

bool isSet();
bool matches(const QString& password);
/// An empty one takes it away.
void set(const QString& password);

} // namespace KioskPassword
