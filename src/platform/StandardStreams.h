#pragma once

namespace tavex2 {

/// Takes the places of standard streams that the program was started without, so that no file of a trial gets one and
/// with it the texts meant for a terminal. Writing to them still fails. Called once, first of all.
void keepStandardStreams();

} // namespace tavex2
