#include "platform/Registry.h"

namespace tavex2 {

std::unique_ptr<Registry> systemRegistry() {
    return nullptr;
}

} // namespace tavex2
