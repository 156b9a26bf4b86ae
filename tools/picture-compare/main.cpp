#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "effect-render/picture.h"

namespace {

using effect_render::Picture;

// Differences of up to this many of 255 count as equal.
constexpr int kTolerance = 2;

struct Difference {
    int largest = 0;     // over all channels of all pixels, 0 to 255
    double share = 0.0;  // of pixels with a channel off by more than kTolerance, 0 to 1
};

int largest_of_pixel(const Picture& a, const Picture& b, size_t pixel) {
    int most = 0;
    for (size_t channel = pixel * 4; channel < pixel * 4 + 4; ++channel) {
        most = std::max(most, std::abs(a.pixels[channel] - b.pixels[channel]));
    }
    return most;
}

Difference difference(const Picture& a, const Picture& b) {
    const size_t pixels = a.pixels.size() / 4;
    Difference result;
    size_t off = 0;
    for (size_t pixel = 0; pixel < pixels; ++pixel) {
        const int most = largest_of_pixel(a, b, pixel);
        off += most > kTolerance ? 1u : 0u;
        result.largest = std::max(result.largest, most);
    }
    result.share = static_cast<double>(off) / static_cast<double>(pixels);
    return result;
}

bool compare(const char* path_a, const char* path_b) {
    try {
        const Picture a = effect_render::LoadPicture(path_a, 4);
        const Picture b = effect_render::LoadPicture(path_b, 4);
        if (a.width == b.width && a.height == b.height) {
            const Difference d = difference(a, b);
            std::printf("%d %.6f\n", d.largest, d.share);
            return true;
        }
        std::fprintf(stderr, "error: %s and %s are of unlike sizes\n", path_a, path_b);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error: %s\n", error.what());
    }
    std::puts("- -");
    return false;
}

}  // namespace

// picture-compare A B [A B]...: for each pair of pictures one line, "LARGEST SHARE": the largest
// difference of a channel, and the share of pixels off by more than 2 of 255. A pair that cannot be
// read or differs in size gives "- -" and a line on stderr; the exit status is then 1. 2 for wrong
// usage.
int main(int argc, char** argv) {
    if (argc < 3 || argc % 2 == 0) {
        std::fputs("usage: picture-compare A B [A B]...\n", stderr);
        return 2;
    }
    bool all = true;
    for (int i = 1; i + 1 < argc; i += 2) {
        all = compare(argv[i], argv[i + 1]) && all;
    }
    return all ? 0 : 1;
}
