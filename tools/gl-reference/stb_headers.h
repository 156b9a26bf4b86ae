#pragma once

// The picture library's headers, without their warnings.
#if defined(__GNUC__)
#pragma GCC system_header
#endif

#include <stb/stb_image.h>
#include <stb/stb_image_write.h>
