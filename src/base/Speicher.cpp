#include "base/Speicher.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace spurkiste::speicher {

void gibZurueck() {
#ifdef __GLIBC__
    (void)::malloc_trim(0);
#endif
}

}  // namespace spurkiste::speicher
