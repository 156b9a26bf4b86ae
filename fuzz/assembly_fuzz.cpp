// Any tree of files as the sources of an effect: includes, segments, prefixes, base64. Asking for a
// map changes nothing, and every byte of the result has its origin.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <iterator>
#include <map>
#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "budget.h"

namespace {

constexpr const char* kPaths[] = {"a.frag",   "lib/b.glsl",  "../c.glsl",    "lib/../d.glsl",
                                  "e f.glsl", "C:\\g.glsl",  "h.glsl",       "i/j/k/l.glsl",
                                  "",         "lib\\m.glsl", "\xC3\xA9.glsl"};
constexpr size_t kMaxFiles = 6;
constexpr size_t kTranslated = size_t{64}
                               << 10;  // longer results are not translated: it takes long

class Tree : public FileSource {
public:
    bool read(const std::string& path, std::string& bytes) override {
        const auto found = files.find(path);
        bytes = found == files.end() ? std::string() : found->second;
        return found != files.end();
    }
    std::map<std::string, std::string> files;
};

std::string path(FuzzedDataProvider& choices) {
    return kPaths[choices.ConsumeIntegralInRange<size_t>(0, std::size(kPaths) - 1)];
}

std::string encoded(const std::string& text) {
    static constexpr char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string result;
    for (size_t i = 0; i < text.size(); i += 3) {
        uint32_t group = 0;
        for (size_t j = 0; j < 3; ++j) {
            group = group << 8 | (i + j < text.size() ? static_cast<uint8_t>(text[i + j]) : 0u);
        }
        for (int shift = 18; shift >= 0; shift -= 6) {
            result += kDigits[group >> shift & 63];
        }
    }
    for (size_t pad = (3 - text.size() % 3) % 3, i = 1; i <= pad; ++i) {
        result[result.size() - i] = '=';
    }
    return result;
}

void choose_stage(FuzzedDataProvider& choices, StageSources& stage) {
    stage.path = path(choices);
    const int segments = choices.ConsumeIntegralInRange<int>(0, 2);
    for (int i = 0; i < segments; ++i) {
        stage.segments.push_back({path(choices), path(choices)});
        stage.segment_indices.push_back(choices.ConsumeIntegralInRange<int>(-1, 12) % 3);
    }
}

// Splits what is left of the input among the files, the first one getting the rest.
void choose_files(FuzzedDataProvider& choices, bool base64, Tree& tree) {
    const size_t count = choices.ConsumeIntegralInRange<size_t>(1, kMaxFiles);
    for (size_t i = 0; i < count; ++i) {
        const std::string name = path(choices);
        const bool encodes = base64 && choices.ConsumeIntegralInRange<int>(0, 7) != 0;
        const std::string text = i + 1 < count ? choices.ConsumeRandomLengthString()
                                               : choices.ConsumeRemainingBytesAsString();
        tree.files[name] = encodes ? encoded(text) : text;
        if (encodes) {
            fuzz::require(DecodeBase64(encoded(text)) == text, "base64 is decoded");
        }
    }
}

void check_map(const SourceMap& map, const std::string& text) {
    fuzz::require(map.origins.size() == text.size(), "the map is as long as the text");
    const size_t step = text.size() / 50 + 1;
    for (size_t at = 0; at <= text.size() && !text.empty(); at += step) {
        const auto position = map.origins.find(at);
        fuzz::require(position && position->file < map.files.size() &&
                          position->offset <= map.files[position->file].text.size(),
                      "every byte has its origin");
    }
    if (!text.empty()) {
        const auto place = map.locate_assembled(text.size() / 2);
        fuzz::require(place && place->line > 0 && place->column > 0, "a place has its line");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    set_log_callback(nullptr);
    FuzzedDataProvider choices(data, size);
    Tree tree;
    ProgramSources sources;
    sources.files = &tree;
    sources.base64 = choices.ConsumeIntegralInRange<int>(0, 3) == 0;
    sources.use_given = choices.ConsumeBool();
    choose_stage(choices, sources.fragment);
    choose_stage(choices, sources.vertex);
    const std::string uniforms = "uniform float PREFIX(a);\n";
    choose_files(choices, sources.base64, tree);

    AssembledProgram plain;
    AssembledProgram mapped;
    ProgramMaps maps;
    bool done = false;
    {
        // Includes may multiply a text up to their own limit, so time counts by the result.
        done = AssembleProgram(sources, uniforms, plain);
        const fuzz::Budget budget(size + plain.fragment.size() + plain.vertex.size());
        fuzz::require(AssembleProgram(sources, uniforms, mapped, &maps) == done,
                      "as without a map");
    }
    if (!done) {
        return 0;
    }
    fuzz::require(plain.fragment == mapped.fragment && plain.vertex == mapped.vertex &&
                      plain.has_vertex == mapped.has_vertex,
                  "asking for a map changes nothing");
    check_map(maps.fragment, plain.fragment);
    check_map(maps.vertex, plain.vertex);
    if (plain.fragment.size() + plain.vertex.size() < kTranslated) {
        ProgramText text;
        static_cast<void>(TranslateAssembled(plain, 1, 1, text));
    }
    return 0;
}
