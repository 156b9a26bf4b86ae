#include "DirectXEffectMgr/Source/core/source_map.h"

#include <algorithm>

namespace {

size_t line_end(std::string_view text, size_t start) {
    return std::min(text.find('\n', start), text.size());
}

}  // namespace

void OriginMap::append(const Stretch& stretch, size_t length) {
    if (length == 0) {
        return;
    }
    size_ += length;
    if (!stretches_.empty() && stretch.copied && stretches_.back().copied) {
        const Stretch& last = stretches_.back();
        const bool joins =
            last.origin.file == stretch.origin.file &&
            last.origin.offset + (stretch.begin - last.begin) == stretch.origin.offset;
        if (joins) {
            return;
        }
    }
    stretches_.push_back(stretch);
}

void OriginMap::append_copy(uint32_t file, size_t offset, size_t length) {
    append(Stretch{size_, SourcePosition{file, offset}, true}, length);
}

void OriginMap::append_replacement(SourcePosition origin, size_t length) {
    append(Stretch{size_, origin, false}, length);
}

size_t OriginMap::index_of(size_t offset) const {
    const auto behind = std::upper_bound(
        stretches_.begin(), stretches_.end(), offset,
        [](size_t value, const Stretch& stretch) { return value < stretch.begin; });
    return static_cast<size_t>(behind - stretches_.begin()) - 1;
}

void OriginMap::append_slice(const OriginMap& from, size_t begin, size_t end) {
    if (begin >= end || from.stretches_.empty()) {
        return;
    }
    for (size_t i = from.index_of(begin); i < from.stretches_.size(); ++i) {
        const Stretch& stretch = from.stretches_[i];
        if (stretch.begin >= end) {
            break;
        }
        const size_t next =
            i + 1 < from.stretches_.size() ? from.stretches_[i + 1].begin : from.size_;
        const size_t first = std::max(begin, stretch.begin);
        const size_t last = std::min(end, next);
        SourcePosition origin = stretch.origin;
        origin.offset += stretch.copied ? first - stretch.begin : 0;
        append(Stretch{size_, origin, stretch.copied}, last - first);
    }
}

std::optional<SourcePosition> OriginMap::find(size_t offset) const {
    if (stretches_.empty()) {
        return std::nullopt;
    }
    const Stretch& stretch = stretches_[index_of(std::min(offset, size_ - 1))];
    SourcePosition position = stretch.origin;
    position.offset += stretch.copied ? std::min(offset, size_) - stretch.begin : 0;
    return position;
}

uint32_t SourceMap::add_file(std::string name, std::string text, bool generated) {
    files.push_back(SourceFile{std::move(name), std::move(text), generated});
    return static_cast<uint32_t>(files.size() - 1);
}

SourceLocation SourceMap::locate(SourcePosition position) const {
    const SourceFile& file = files[position.file];
    const std::string_view text = file.text;
    const size_t offset = std::min(position.offset, text.size());
    const std::string_view before = text.substr(0, offset);
    const size_t newline = before.rfind('\n');
    const size_t start = newline == std::string_view::npos ? 0 : newline + 1;
    SourceLocation location;
    location.file = file.name;
    location.line_text = text.substr(start, line_end(text, start) - start);
    location.line = static_cast<size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    location.column = offset - start + 1;
    location.generated = file.generated;
    return location;
}

std::optional<SourceLocation> SourceMap::locate_assembled(size_t offset) const {
    const std::optional<SourcePosition> position = origins.find(offset);
    if (!position) {
        return std::nullopt;
    }
    return locate(*position);
}
