#include "cli/process_memory.h"

namespace merivane {

// The system's heap does so.
void keepFreedMemory() {}

}  // namespace merivane
