// Any text as a source of any stage: a tree or a failure with its place, and the same again from a
// second parser.

#include <cstdint>
#include <string>

#include "budget.h"
#include "glsl/parser.h"
#include "tree_dump.h"

namespace {

// The tree as text, or the messages and the place of the failure.
std::string parsed(const std::string& source, uint32_t stage, bool wants_place) {
    glsl::parser parser(source.c_str(), "codeDX");
    glsl::FailurePlace place;
    const auto unit = parser.parse(stage, wants_place ? &place : nullptr);
    const std::string messages = parser.error() == nullptr ? "" : parser.error();
    fuzz::require((parser.errorLine() == 0) == messages.empty(), "a message has its line");
    fuzz::require(messages.empty() || messages.compare(messages.size() - 2, 2, "\r\n") == 0,
                  "messages are whole lines");
    if (unit) {
        return messages + glsl::test::dump(*unit);
    }
    fuzz::require(place.offset <= place.source.size(), "a failure lies in the text");
    return messages;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static constexpr uint32_t kStages[] = {1, 5, 5, 1, 2, 3, 0, 6};
    const uint32_t stage = kStages[size > 0 ? data[size - 1] % 8 : 0];
    const std::string source(reinterpret_cast<const char*>(data), size);
    {
        const fuzz::Budget budget(size);
        glsl::parser parser(source.c_str(), "codeDX");
        parser.parse(stage);
    }
    fuzz::require(parsed(source, stage, false) == parsed(source, stage, true),
                  "a parse from scratch is deterministic");
    return 0;
}
