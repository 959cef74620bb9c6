#include "app/cli/LastResort.h"

#include "app/cli/CommandLine.h"
#include "base/PlainText.h"

#include <exception>
#include <new>

namespace tavex2 {

int withLastResort(const std::function<int()>& program, std::ostream& err) {
    try {
        return program();
    } catch (const std::bad_alloc&) {
        err << "tavex2: There is not enough memory. Close other programs, or use shorter trials.\n";
    } catch (const std::exception& problem) {
        err << "tavex2: Something failed that should not: " << printable(problem.what(), LineBreaks::Escape)
            << ". Please report it.\n";
    } catch (...) {
        err << "tavex2: Something failed that should not, for an unknown reason. Please report it.\n";
    }
    return exitFailed;
}

} // namespace tavex2
