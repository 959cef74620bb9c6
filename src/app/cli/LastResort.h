#pragma once

#include <functional>
#include <ostream>

namespace tavex2 {

/// Runs the program and gives its exit code. Failures come back as values everywhere; should an exception get out
/// nevertheless, it becomes one line on `err` and the exit code for failure instead of a crash.
int withLastResort(const std::function<int()>& program, std::ostream& err);

} // namespace tavex2
