// Proof that the checker can fail: conversions with a mistake added must be reported, in the right words.
#pragma once

namespace containment {

/// Prints one line per mistake; 0 when every one was reported and an honest conversion was not.
int selfTest();

} // namespace containment
