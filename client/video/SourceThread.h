#pragma once

#include "video/SourceFeed.h"
#include "video/SourceLink.h"

#include <functional>

using FeedMaker = std::function<std::unique_ptr<SourceFeed>(SourceLink&)>;

/// Starts a thread that plays what `make` gives, one feed after the other, until the link is stopped. The
/// thread belongs to nobody: whatever it is stuck in, nobody has to wait for it.
void startSourceThread(std::shared_ptr<SourceLink> link, FeedMaker make);

/// Waits until all such threads have ended, at the end of the program; false if some have not by then. Their
/// links must have been stopped.
bool waitForSourceThreads(int ms);
