#pragma once

/// Base of the numbered inputs of an effect.

#include "movit/effect.h"

namespace movit {

/// One numbered input, a picture or a run of audio samples. Adds seven slots behind those of
/// Effect, in this order; all sizes are those of the first pass.
class Input : public Effect {
public:
    virtual bool is_audio_input() const = 0;
    virtual uint32_t get_width() const = 0;   // pixels, or samples
    virtual uint32_t get_height() const = 0;  // rows; 1 for audio
    virtual uint32_t get_pitch() const = 0;   // bytes from row to row; samples for audio
    virtual int32_t get_input_mode_a() const = 0;
    virtual int32_t get_input_mode_b() const = 0;
    virtual uint32_t get_depth() const = 0;  // slices; 1 for a flat picture and for audio
};

}  // namespace movit
