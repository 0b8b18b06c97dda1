#include "common/SmallHeap.h"

#include <algorithm>
#include <thread>

#ifdef __GLIBC__
#include <malloc.h>
#endif

void keepHeapSmall()
{
#ifdef __GLIBC__
    // It would keep eight heaps for each core, and each of the threads leaves its holes in one of them.
    mallopt(M_ARENA_MAX, int(std::max(2U, std::thread::hardware_concurrency())));
    // Small pieces that are kept apart are looked through for each larger one, and so for each packet.
    mallopt(M_MXFAST, 0);
#endif
}
