#include "host/worker/heap.h"

#include <malloc.h>

namespace cmpihost::worker {

void keep_freed_memory() {
    mallopt(M_TRIM_THRESHOLD, 4 << 20);
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
}

} // namespace cmpihost::worker
