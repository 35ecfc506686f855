// The state that conversions leave behind in the process: the scene's options, the scene's
// material set and the shared default sun. Restoring it lets one process convert many records
// with the same result as a fresh process for each.
#pragma once

namespace CorvaneCore {

// Default options, an empty material set, and the default sun's settings as at load (its id
// and name never change).
void restoreProcessState();

}  // namespace CorvaneCore
