#include "tevs/core.h"

static const LibraryVersion kVersion = {
    5, 1, 133, 274, {'q', '7', 0, 0}, "libtevsq7.so.5.1", "5.1.1", "Jun 17 2006",
};

const LibraryVersion* tevsGetLibVersion(void) { return &kVersion; }
