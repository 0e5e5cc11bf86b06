#pragma once

namespace merivane {

/// Has the process keep the memory it frees, up to some megabytes, instead of giving it back to the system
/// and asking for it again. For a process that does one thing and ends.
void keepFreedMemory();

}  // namespace merivane
