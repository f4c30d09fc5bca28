#include "modular/ITargetAwarePositionWeighter.h"

// The interface has no code of its own; the file keeps each class in its
// own header and source pair.
