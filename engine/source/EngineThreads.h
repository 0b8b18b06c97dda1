#pragma once

#include <functional>

/// Starts a thread that belongs to nobody: whatever it is stuck in, nobody has to wait for it.
void startEngineThread(std::function<void()> work);

/// Waits until all of them have ended; false if some have not by then.
bool waitForEngineThreads(int ms);
