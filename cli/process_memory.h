#pragma once

namespace merivane {

/// From here on the process keeps the memory that it frees, up to some megabytes, rather than giving it back
/// to the system and asking for it again. For a process that does one thing and ends.
void keepFreedMemory();

}  // namespace merivane
