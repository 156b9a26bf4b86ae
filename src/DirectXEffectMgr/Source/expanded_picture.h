#pragma once

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"

/// Expands a record's one-channel picture to four channels, into the record's own buffer: the grey
/// value three times, and full alpha.
///
/// The buffer is kept while the size stays. A still picture is converted once: its buffer counts as
/// up to date until the record is marked stale. A streaming picture is converted each time.
///
/// @param record  has a picture (`still_pixels`, else `pixels`)
/// @returns false, with the buffer as it was, if the picture's size or row bytes make no sense
[[nodiscard]] bool expand_one_channel(InputTexture& record);

/// Frees the record's buffer, if any.
void free_expanded(InputTexture& record);
