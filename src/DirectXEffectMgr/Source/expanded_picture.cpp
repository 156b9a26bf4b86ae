#include "DirectXEffectMgr/Source/expanded_picture.h"

#include <cstddef>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace {

// Rows of the picture, over all slices of a volume.
uint64_t rows_of(const InputTexture& record) {
    return uint64_t{record.height} * (record.volume && record.depth > 1 ? record.depth : 1);
}

// What OpenCV takes: a size above 0 whose four-channel rows still count in `int`, and rows that do
// not overlap. A row step of 0 means rows without gaps.
bool is_sound(const InputTexture& record) {
    constexpr uint32_t kMaxSide = 1U << 28;
    return record.width > 0 && record.width < kMaxSide && record.height > 0 &&
           rows_of(record) < kMaxSide && (record.pitch == 0 || record.pitch >= record.width);
}

// A volume's depth is not noted with its buffer, so such a buffer is never kept.
bool keeps_buffer(const InputTexture& record) {
    return record.expanded_pixels != nullptr && record.expanded_width == record.width &&
           record.expanded_height == record.height && !record.volume &&
           (record.still_pixels == nullptr || !record.still_stale);
}

}  // namespace

bool expand_one_channel(InputTexture& record) {
    if (!is_sound(record)) {
        return false;
    }
    const auto rows = static_cast<int>(rows_of(record));
    const auto columns = static_cast<int>(record.width);
    if (keeps_buffer(record)) {
        if (record.pixels == nullptr) {
            return true;
        }
    } else {
        free_expanded(record);
        record.expanded_pixels = new uint8_t[rows_of(record) * record.width * 4];
    }
    record.expanded_width = record.width;
    record.expanded_height = record.height;
    const void* const source = record.still_pixels != nullptr ? record.still_pixels : record.pixels;
    const cv::Mat grey(rows, columns, CV_8UC1, const_cast<void*>(source), record.pitch);
    cv::Mat expanded(rows, columns, CV_8UC4, record.expanded_pixels, size_t{record.width} * 4);
    cv::cvtColor(grey, expanded, cv::COLOR_GRAY2BGRA);
    return true;
}

void free_expanded(InputTexture& record) {
    delete[] record.expanded_pixels;
    record.expanded_pixels = nullptr;
}
