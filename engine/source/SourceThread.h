#pragma once

#include "source/SourceFeed.h"
#include "source/SourceLink.h"

/// Starts a thread that plays what `make` gives, one feed after the other, until the link is stopped. The
/// thread belongs to nobody: whatever it is stuck in, nobody has to wait for it.
void startSourceThread(std::shared_ptr<SourceLink> link, FeedMaker make);

/// Waits until the threads of all sources have ended; false if some have not by then. To be called once all
/// sources are stopped or gone and before the application object goes: a thread that is left must not see the
/// program's end, so that after a false std::_Exit is the way out.
bool waitForSourceThreads(int ms);
