#include "platform/StandardStreams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace tavex2 {

void keepStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0) // a new file gets the lowest number that is free, which is this one
            if (::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0) return;
}

} // namespace tavex2
