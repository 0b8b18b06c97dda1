#pragma once

#include "cameras/SourceAddress.h"

/// What the settings know of who this desk is at the relays of its sites. It lies beside the user's cameras,
/// in a file that its owner alone may read, of the kind that --relay takes.
namespace RelayLogin {

/// Nothing if none is kept; with one line in `error`, if it can't be used.
std::optional<Login> load(QString* error);

/// Keeps it in place of the one before; without a user none is kept any more. False with one line in `error`.
bool keep(const Login& login, QString* error);

} // namespace RelayLogin
