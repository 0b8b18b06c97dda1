#pragma once

enum class SourceState
{
    Stopped,
    Connecting,
    Playing,
    Lost,  ///< it will be tried again by itself
    Ended, ///< what it plays has come to its end; only a seek goes on
};
