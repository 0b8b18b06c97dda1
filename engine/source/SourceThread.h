#pragma once

#include "source/SourceFeed.h"
#include "source/SourceLink.h"

#include <functional>

using FeedMaker = std::function<std::unique_ptr<SourceFeed>(SourceLink&)>;

/// Starts a thread that plays what `make` gives, one feed after the other, until the link is stopped. The
/// thread belongs to nobody: whatever it is stuck in, nobody has to wait for it.
void startSourceThread(std::shared_ptr<SourceLink> link, FeedMaker make);
