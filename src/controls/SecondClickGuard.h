#pragma once

namespace Controls {

// To be called when a click closes a window: if the user was double-clicking, the second click would hit
// whatever was beneath. It is taken out of the program's events; the next single press ends the watch.
void guardAgainstSecondClick();

} // namespace Controls
