#include "platform/Arguments.h"

namespace tavex2 {

ProgramArguments::ProgramArguments(int argc, char** argv) : m_values(argv, argv + argc) {}

} // namespace tavex2
