#include "platform/StandardStreams.h"

namespace tavex2 {

/// Files have handles of their own here.
void keepStandardStreams() {}

} // namespace tavex2
