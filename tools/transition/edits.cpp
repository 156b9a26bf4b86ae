#include "transition/edits.h"

#include <algorithm>

namespace transition {

void Edits::replace(size_t begin, size_t end, std::string with) {
    changes_.push_back({begin, end, std::move(with)});
}

std::string Edits::apply(std::string_view text) const {
    std::vector<Change> sorted = changes_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Change& a, const Change& b) { return a.begin < b.begin; });
    std::string result;
    size_t at = 0;
    for (const Change& change : sorted) {
        if (change.begin < at) {
            continue;
        }
        result.append(text.substr(at, change.begin - at));
        result += change.with;
        const std::string_view gone = text.substr(change.begin, change.end - change.begin);
        const auto newlines = static_cast<size_t>(std::count(gone.begin(), gone.end(), '\n'));
        const auto kept =
            static_cast<size_t>(std::count(change.with.begin(), change.with.end(), '\n'));
        result.append(newlines > kept ? newlines - kept : 0, '\n');
        at = change.end;
    }
    result.append(text.substr(at));
    return result;
}

}  // namespace transition
