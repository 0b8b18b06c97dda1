#pragma once

/// Keeps what the many threads of many cameras take and give back close together; once, before the first of
/// them. Where the system's allocator can't be told, nothing changes.
void keepHeapSmall();
