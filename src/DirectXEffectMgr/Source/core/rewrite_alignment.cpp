#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace {

// Cells of the table that compares two runs of tokens; longer runs are matched at their ends only.
constexpr size_t kMostCells = size_t{4} << 20;

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    for (size_t start = 0;;) {
        const size_t newline = text.find('\n', start);
        lines.push_back(text.substr(start, newline - start));
        if (newline == std::string_view::npos) {
            return lines;
        }
        start = newline + 1;
    }
}

bool is_blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_word(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Words and single signs; enough to tell one place from another.
std::vector<std::string_view> tokens_of(std::string_view text) {
    std::vector<std::string_view> tokens;
    for (size_t i = 0; i < text.size();) {
        size_t end = i + 1;
        while (is_word(text[i]) && end < text.size() && is_word(text[end])) {
            ++end;
        }
        if (!is_blank(text[i])) {
            tokens.push_back(text.substr(i, end - i));
        }
        i = end;
    }
    return tokens;
}

// Lines that occur once in each of two texts, and the same there: pairs of indices, ascending in
// both.
using Anchors = std::vector<std::pair<size_t, size_t>>;

struct Occurrence {
    size_t in_original = 0;
    size_t in_rewritten = 0;
    int originals = 0;
    int rewrittens = 0;
};

// The longest run of pairs that ascends in both.
Anchors longest_ascending(const Anchors& pairs) {
    std::vector<size_t> tails;  // by length - 1: index of the pair that ends the best run
    std::vector<size_t> before(pairs.size(), SIZE_MAX);
    for (size_t i = 0; i < pairs.size(); ++i) {
        const auto place = std::lower_bound(
            tails.begin(), tails.end(), pairs[i].second,
            [&pairs](size_t tail, size_t value) { return pairs[tail].second < value; });
        if (place != tails.begin()) {
            before[i] = *(place - 1);
        }
        if (place == tails.end()) {
            tails.push_back(i);
        } else {
            *place = i;
        }
    }
    Anchors run;
    for (size_t i = tails.empty() ? SIZE_MAX : tails.back(); i != SIZE_MAX; i = before[i]) {
        run.push_back(pairs[i]);
    }
    std::reverse(run.begin(), run.end());
    return run;
}

Anchors anchors_of(const std::vector<std::string_view>& original,
                   const std::vector<std::string_view>& rewritten) {
    std::unordered_map<std::string_view, Occurrence> occurrences;
    for (size_t i = 0; i < original.size(); ++i) {
        Occurrence& found = occurrences[original[i]];
        found.in_original = i;
        ++found.originals;
    }
    for (size_t i = 0; i < rewritten.size(); ++i) {
        Occurrence& found = occurrences[rewritten[i]];
        found.in_rewritten = i;
        ++found.rewrittens;
    }
    Anchors pairs;
    for (size_t i = 0; i < original.size(); ++i) {
        const Occurrence& found = occurrences[original[i]];
        if (found.originals == 1 && found.rewrittens == 1) {
            pairs.emplace_back(i, found.in_rewritten);
        }
    }
    return longest_ascending(pairs);
}

// Lines of both texts that correspond as a whole: [first, last) of each.
struct Region {
    size_t original_first, original_last;
    size_t rewritten_first, rewritten_last;
};

// The lines between the nearest two that are the same in both texts; macro uses over several lines
// and what is left of cut branches change their number.
Region region_of(const std::vector<std::string_view>& original,
                 const std::vector<std::string_view>& rewritten, const Anchors& anchors,
                 size_t line) {
    Region region{0, original.size(), 0, rewritten.size()};
    for (const auto& [in_original, in_rewritten] : anchors) {
        if (in_rewritten == line) {
            return Region{in_original, in_original + 1, line, line + 1};
        }
        if (in_rewritten > line) {
            region.original_last = in_original;
            region.rewritten_last = in_rewritten;
            break;
        }
        region.original_first = in_original + 1;
        region.rewritten_first = in_rewritten + 1;
    }
    return region;
}

// The text of lines [first, last) of `text`.
std::string_view text_of(std::string_view text, const std::vector<std::string_view>& lines,
                         size_t first, size_t last) {
    if (first >= last) {
        return text.substr(first < lines.size()
                               ? static_cast<size_t>(lines[first].data() - text.data())
                               : text.size(),
                           0);
    }
    const char* const end = lines[last - 1].data() + lines[last - 1].size();
    return text.substr(static_cast<size_t>(lines[first].data() - text.data()),
                       static_cast<size_t>(end - lines[first].data()));
}

constexpr size_t kUnmatched = SIZE_MAX;

// For each of `to`'s tokens the index of the one of `from` that it is, in a longest common run.
class TokenMatch {
public:
    TokenMatch(const std::vector<std::string_view>& from, const std::vector<std::string_view>& to)
        : from_(from), to_(to), partners_(to.size(), kUnmatched) {
        while (begin_ < shorter() && from[begin_] == to[begin_]) {
            partners_[begin_] = begin_;
            ++begin_;
        }
        while (end_ < shorter() - begin_ &&
               from[from.size() - 1 - end_] == to[to.size() - 1 - end_]) {
            partners_[to.size() - 1 - end_] = from.size() - 1 - end_;
            ++end_;
        }
        match_middle();
    }

    // The token of `from` for token `index` of `to`; `from`'s size if none comes near.
    size_t partner(size_t index) const {
        if (partners_[index] != kUnmatched) {
            return partners_[index];
        }
        size_t before = index;
        while (before > 0 && partners_[before - 1] == kUnmatched) {
            --before;
        }
        // What stands behind the last known token is what was replaced, or the next known one.
        return before == 0 ? 0 : partners_[before - 1] + 1;
    }

private:
    size_t shorter() const { return std::min(from_.size(), to_.size()); }

    void match_middle() {
        const size_t rows = from_.size() - begin_ - end_;
        const size_t columns = to_.size() - begin_ - end_;
        if (rows == 0 || columns == 0 || (rows + 1) * (columns + 1) > kMostCells) {
            return;
        }
        // lengths[r][c]: longest common run of what is behind row r and column c.
        std::vector<uint32_t> lengths((rows + 1) * (columns + 1), 0);
        const auto at = [columns](size_t r, size_t c) { return r * (columns + 1) + c; };
        for (size_t r = rows; r-- > 0;) {
            for (size_t c = columns; c-- > 0;) {
                lengths[at(r, c)] = from_[begin_ + r] == to_[begin_ + c]
                                        ? lengths[at(r + 1, c + 1)] + 1
                                        : std::max(lengths[at(r + 1, c)], lengths[at(r, c + 1)]);
            }
        }
        for (size_t r = 0, c = 0; r < rows && c < columns;) {
            if (from_[begin_ + r] == to_[begin_ + c]) {
                partners_[begin_ + c++] = begin_ + r++;
            } else if (lengths[at(r, c + 1)] >= lengths[at(r + 1, c)]) {
                ++c;
            } else {
                ++r;
            }
        }
    }

    const std::vector<std::string_view>& from_;
    const std::vector<std::string_view>& to_;
    std::vector<size_t> partners_;
    size_t begin_ = 0;  // tokens that are the same at the beginning
    size_t end_ = 0;    // and at the end
};

// Index of the last token that begins in front of `position`.
std::optional<size_t> token_before(const std::vector<std::string_view>& tokens,
                                   const char* position) {
    const auto behind = std::partition_point(
        tokens.begin(), tokens.end(),
        [position](std::string_view token) { return token.data() < position; });
    if (behind == tokens.begin()) {
        return std::nullopt;
    }
    return static_cast<size_t>(behind - tokens.begin()) - 1;
}

}  // namespace

namespace {

// Of a long stretch that all changed and has as many lines as before, the one line.
Region narrowed(const Region& region, size_t line) {
    constexpr size_t kLongStretch = 40;  // lines; their tokens are still compared in a short time
    const size_t originals = region.original_last - region.original_first;
    const size_t rewrittens = region.rewritten_last - region.rewritten_first;
    if (originals != rewrittens || originals <= kLongStretch) {
        return region;
    }
    const size_t in_original = region.original_first + (line - region.rewritten_first);
    return Region{in_original, in_original + 1, line, line + 1};
}

}  // namespace

RewriteAlignment::RewriteAlignment(std::string_view original, std::string_view rewritten)
    : original_(original),
      rewritten_(rewritten),
      from_lines_(lines_of(original)),
      to_lines_(lines_of(rewritten)),
      anchors_(anchors_of(from_lines_, to_lines_)) {}

size_t RewriteAlignment::original_offset(size_t offset) const {
    const std::string_view passed = rewritten_.substr(0, std::min(offset, rewritten_.size()));
    const auto line = static_cast<size_t>(std::count(passed.begin(), passed.end(), '\n'));
    const Region region = narrowed(region_of(from_lines_, to_lines_, anchors_, line), line);
    const std::string_view from_text =
        text_of(original_, from_lines_, region.original_first, region.original_last);
    const std::string_view to_text =
        text_of(rewritten_, to_lines_, region.rewritten_first, region.rewritten_last);
    const std::vector<std::string_view> from = tokens_of(from_text);
    const std::vector<std::string_view> to = tokens_of(to_text);
    const std::optional<size_t> token = token_before(to, rewritten_.data() + passed.size());
    const auto from_begin = static_cast<size_t>(from_text.data() - original_.data());
    if (!token) {
        const bool at_the_end = to.empty() && line + 1 == to_lines_.size();
        return from_begin + (at_the_end ? from_text.size() : 0);
    }
    const size_t partner = TokenMatch(from, to).partner(*token);
    return partner < from.size() ? static_cast<size_t>(from[partner].data() - original_.data())
                                 : from_begin + from_text.size();
}
