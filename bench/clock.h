#pragma once

namespace bench {

/// A point in time in microseconds, fine enough for single device calls.
///
/// On Windows the time on the wall, as work goes on in other threads there, read from the
/// processor's own counter: the system's clock takes longer than what is measured. Else the
/// processor time of this thread, which other programs on the machine disturb less.
double now_us();

}  // namespace bench
