// How this process keeps the memory that it gives back.
#pragma once

namespace cmpihost::worker {

/// Keeps some MiB of what was freed, so that the pages of one reply serve the next: the system would clear them anew.
/// Larger blocks still go back to the system at once. For the whole process, before it has threads.
void keep_freed_memory();

} // namespace cmpihost::worker
