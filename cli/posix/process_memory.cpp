#include "cli/process_memory.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace merivane {

void keepFreedMemory() {
#ifdef __GLIBC__
  mallopt(M_TOP_PAD, 1 << 20);
  mallopt(M_TRIM_THRESHOLD, 1 << 24);
  mallopt(M_MMAP_THRESHOLD, 1 << 21);
#endif
}

}  // namespace merivane
