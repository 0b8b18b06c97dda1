#pragma once

struct ClientSettings;

/// Gives all that is made from now on the language and the skin of the settings: decks, the client's own
/// windows, and Qt's dialogs. False if there is no such language, and English it is.
bool applyLook(const ClientSettings& settings);
