#pragma once

namespace effect_render {

/// From now on the first Ctrl-C only makes WasInterrupted() true, so that a picture that is being
/// written is not cut short; a second one ends the process as ever.
void CatchInterrupt();

/// Whether Ctrl-C was pressed. Any thread may ask.
bool WasInterrupted();

}  // namespace effect_render
