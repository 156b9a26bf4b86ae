#include "effect_json.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "files.h"
#include "json_field.h"
#include "param_json.h"
#include "pass_json.h"
#include "tool_error.h"

namespace effect_render {
namespace {

constexpr int32_t kMostTargets = 256;
constexpr int32_t kLargestSide = 16384;  // pixels
constexpr int kDeepestChain = 8;         // chains inside chains

InputDescription ReadInput(const JsonField& field, const std::string& folder) {
    InputDescription input;
    if (field.IsText()) {
        input.files = {PathIn(folder, field.Text())};
        return input;
    }
    field.AllowOnly({"file", "files", "target", "filter", "channels", "still"});
    if (field.Has("target")) {
        input.kind = InputKind::Target;
        input.target = field.At("target").Integer(0, kMostTargets - 1);
        return input;
    }
    const std::vector<std::string> files = field.Has("files")
                                               ? field.At("files").Texts()
                                               : std::vector<std::string>{field.At("file").Text()};
    for (const std::string& file : files) {
        input.files.push_back(PathIn(folder, file));
    }
    if (input.files.empty()) {
        field.At("files").Fail("expected at least one file");
    }
    if (field.Has("filter")) {
        const std::string filter = field.At("filter").Text();
        if (filter != "linear" && filter != "nearest") {
            field.At("filter").Fail("expected \"linear\" or \"nearest\"");
        }
        input.nearest = filter == "nearest";
    }
    if (field.Has("channels")) {
        input.channels = field.At("channels").Integer(1, 4);
        if (input.channels != 1 && input.channels != 4) {
            field.At("channels").Fail("expected 1 or 4");
        }
    }
    input.still = field.Has("still") && field.At("still").Flag();
    return input;
}

struct NamedNumber {
    std::string_view name;
    int32_t number;
};

constexpr NamedNumber kBlendModes[] = {
    {"none", static_cast<int32_t>(BlendMode::None)},
    {"alpha", static_cast<int32_t>(BlendMode::Alpha)},
    {"add", static_cast<int32_t>(BlendMode::Add)},
    {"premultiplied", static_cast<int32_t>(BlendMode::Premultiplied)},
    {"screen", static_cast<int32_t>(BlendMode::Screen)},
};

constexpr NamedNumber kPrimitives[] = {
    {"strip", static_cast<int32_t>(PrimitiveMode::Strip)},
    {"triangles", static_cast<int32_t>(PrimitiveMode::Triangles)},
    {"lines", static_cast<int32_t>(PrimitiveMode::Lines)},
};

// One of the names of a table, or a number that goes to the library as it is.
template <size_t N>
int32_t ReadChoice(const JsonField& field, const NamedNumber (&table)[N], int32_t highest) {
    if (field.IsNumber()) {
        return field.Integer(0, highest);
    }
    const std::string name = field.Text();
    std::string names;
    for (const NamedNumber& row : table) {
        if (row.name == name) {
            return row.number;
        }
        names += names.empty() ? "" : ", ";
        names += row.name;
    }
    field.Fail("expected one of " + names);
}

void ReadClear(const JsonField& field, EffectDescription& effect) {
    if (field.IsFlag()) {
        effect.clear = field.Flag();
        return;
    }
    const std::vector<double> color = field.Numbers();
    if (color.size() != 4) {
        field.Fail("expected false, or four numbers R, G, B, A");
    }
    for (size_t i = 0; i < 4; ++i) {
        effect.clear_color[i] = static_cast<float>(color[i]);
    }
}

void ReadFlags(const JsonField& root, EffectDescription& effect) {
    const auto flag = [&root](const char* name) { return root.Has(name) && root.At(name).Flag(); };
    effect.depth = flag("depth");
    effect.msaa = flag("msaa");
    effect.cull_back = flag("cull-back");
    if (root.Has("blend")) {
        effect.blend = ReadChoice(root.At("blend"), kBlendModes, 5);
    }
    if (root.Has("primitive")) {
        effect.primitive = ReadChoice(root.At("primitive"), kPrimitives, 3);
    }
    if (root.Has("clear")) {
        ReadClear(root.At("clear"), effect);
    }
}

std::vector<std::vector<std::string>> ReadSegments(const JsonField& field,
                                                   const std::string& folder) {
    std::vector<std::vector<std::string>> segments;
    for (const JsonField& item : field.Items()) {
        std::vector<std::string> variants;
        for (const std::string& file : item.Texts()) {
            variants.push_back(PathIn(folder, file));
        }
        if (variants.empty()) {
            item.Fail("a segment needs at least one variant");
        }
        segments.push_back(std::move(variants));
    }
    return segments;
}

std::vector<int32_t> ReadIndices(const JsonField& field,
                                 const std::vector<std::vector<std::string>>& segments) {
    const std::vector<JsonField> items = field.Items();
    if (items.size() != segments.size()) {
        field.Fail("expected one number for each of " + std::to_string(segments.size()) +
                   " segment(s)");
    }
    std::vector<int32_t> indices;
    for (size_t i = 0; i < items.size(); ++i) {
        indices.push_back(items[i].Integer(0, static_cast<int32_t>(segments[i].size()) - 1));
    }
    return indices;
}

VariantChoice ReadVariants(const JsonField& field, const EffectDescription& effect) {
    field.AllowOnly({"fragment", "vertex"});
    VariantChoice choice = effect.variants;
    if (field.Has("fragment")) {
        choice.fragment = ReadIndices(field.At("fragment"), effect.fragment_segments);
    }
    if (field.Has("vertex")) {
        choice.vertex = ReadIndices(field.At("vertex"), effect.vertex_segments);
    }
    return choice;
}

void ReadSegmentFields(const JsonField& root, const std::string& folder,
                       EffectDescription& effect) {
    if (root.Has("segments")) {
        const JsonField segments = root.At("segments");
        segments.AllowOnly({"fragment", "vertex"});
        if (segments.Has("fragment")) {
            effect.fragment_segments = ReadSegments(segments.At("fragment"), folder);
        }
        if (segments.Has("vertex")) {
            effect.vertex_segments = ReadSegments(segments.At("vertex"), folder);
        }
    }
    effect.variants.fragment.assign(effect.fragment_segments.size(), 0);
    effect.variants.vertex.assign(effect.vertex_segments.size(), 0);
    if (root.Has("variants")) {
        effect.variants = ReadVariants(root.At("variants"), effect);
    }
}

void ReadPrograms(const JsonField& field, const std::string& folder, EffectDescription& effect) {
    if (effect.base64) {
        field.Fail("an effect whose files are base64 text has no further programs");
    }
    for (const JsonField& item : field.Items()) {
        item.AllowOnly({"name", "fragment", "vertex"});
        ProgramDescription program;
        program.name = item.At("name").Text();
        if (item.Has("fragment")) {
            program.fragment = PathIn(folder, item.At("fragment").Text());
        }
        if (item.Has("vertex")) {
            program.vertex = PathIn(folder, item.At("vertex").Text());
        }
        effect.programs.push_back(std::move(program));
    }
}

StepDescription ReadStep(const JsonField& field, const EffectDescription& effect) {
    field.AllowOnly({"swap", "params", "variants"});
    StepDescription step;
    if (field.Has("swap")) {
        if (effect.extra_targets == 0) {
            field.At("swap").Fail("there are no 'targets' to swap");
        }
        step.swaps = field.At("swap").Integers(0, effect.extra_targets - 1);
    }
    if (field.Has("params")) {
        step.params = ReadOverrides(field.At("params"), effect);
    }
    if (field.Has("variants")) {
        step.variants = ReadVariants(field.At("variants"), effect);
    }
    return step;
}

void ReadTargetsAndSteps(const JsonField& root, EffectDescription& effect) {
    if (root.Has("targets")) {
        effect.extra_targets = root.At("targets").Integer(0, kMostTargets);
    }
    for (size_t i = 0; i < effect.inputs.size(); ++i) {
        const InputDescription& input = effect.inputs[i];
        if (input.kind == InputKind::Target && input.target >= effect.extra_targets) {
            root.At("inputs").Items()[i].Fail("there is no target " + std::to_string(input.target));
        }
    }
    if (root.Has("steps")) {
        for (const JsonField& item : root.At("steps").Items()) {
            effect.steps.push_back(ReadStep(item, effect));
        }
    }
    if (effect.steps.empty()) {
        effect.steps.resize(1);
    }
}

std::optional<std::pair<uint32_t, uint32_t>> ReadSize(const JsonField& root) {
    if (!root.Has("size")) {
        return std::nullopt;
    }
    const std::vector<int32_t> size = root.At("size").Integers(1, kLargestSide);
    if (size.size() != 2) {
        root.At("size").Fail("expected two numbers, width and height");
    }
    return std::pair(static_cast<uint32_t>(size[0]), static_cast<uint32_t>(size[1]));
}

void ReadSources(const JsonField& root, const std::string& folder, EffectDescription& effect) {
    effect.fragment = PathIn(folder, root.At("fragment").Text());
    if (root.Has("vertex")) {
        effect.vertex = PathIn(folder, root.At("vertex").Text());
    }
    if (root.Has("encoding")) {
        const std::string encoding = root.At("encoding").Text();
        if (encoding != "text" && encoding != "base64") {
            root.At("encoding").Fail("expected \"text\" or \"base64\"");
        }
        effect.base64 = encoding == "base64";
    }
    effect.size = ReadSize(root);
    if (root.Has("defines")) {
        for (const auto& [name, value] : root.At("defines").Members()) {
            if (!IsIdentifier(name)) {
                value.Fail("this cannot be the name of a macro");
            }
            effect.defines.emplace_back(name, value.Text());
        }
    }
}

EffectDescription ReadEffect(const JsonField& root, const std::string& file,
                             const std::string& folder) {
    root.AllowOnly({"description", "fragment",  "vertex",    "encoding",  "size",
                    "inputs",      "audio",     "params",    "defines",   "depth",
                    "msaa",        "cull-back", "blend",     "primitive", "clear",
                    "segments",    "variants",  "targets",   "programs",  "attributes",
                    "elements",    "vertices",  "instances", "passes",    "steps"});
    EffectDescription effect;
    effect.source = file;
    ReadSources(root, folder, effect);
    if (root.Has("inputs")) {
        for (const JsonField& item : root.At("inputs").Items()) {
            effect.inputs.push_back(ReadInput(item, folder));
        }
    }
    if (root.Has("audio")) {
        for (const std::string& path : root.At("audio").Texts()) {
            effect.audio.push_back(PathIn(folder, path));
        }
    }
    if (root.Has("params")) {
        ReadParams(root.At("params"), effect);
    }
    ReadFlags(root, effect);
    ReadSegmentFields(root, folder, effect);
    if (root.Has("programs")) {
        ReadPrograms(root.At("programs"), folder, effect);
    }
    effect.passes = ReadPasses(root, folder, effect);
    ReadTargetsAndSteps(root, effect);
    return effect;
}

EffectChain LoadChain(const std::string& folder, int depth);

// Makes the output of the effect before it an input of `effect`.
void FeedFromPrevious(const JsonField& item, EffectDescription& effect) {
    const int32_t number = item.Has("input") ? item.At("input").Integer(1, 16) : 1;
    const auto index = static_cast<size_t>(number - 1);
    if (index > effect.inputs.size()) {
        item.At("input").Fail("the effect has " + std::to_string(effect.inputs.size()) +
                              " input(s)");
    }
    if (index == effect.inputs.size()) {
        effect.inputs.emplace_back();
    }
    effect.inputs[index] = InputDescription();
    effect.inputs[index].kind = InputKind::Previous;
}

void Override(const JsonField& params, EffectChain& links) {
    for (EffectDescription& effect : links) {
        if (links.size() > 1) {
            params.Fail("a chain inside a chain takes no parameters");
        }
        for (auto& [name, values] : ReadOverrides(params, effect)) {
            ParamTrack& track = *effect.FindParam(name);
            track.still = values;
            track.first.clear();
            track.last.clear();
        }
    }
}

EffectChain ReadChain(const JsonField& root, const std::string& folder, int depth) {
    root.AllowOnly({"description", "chain", "size"});
    EffectChain chain;
    for (const JsonField& item : root.At("chain").Items()) {
        if (!item.IsText()) {
            item.AllowOnly({"effect", "params", "input"});
        }
        const std::string name = item.IsText() ? item.Text() : item.At("effect").Text();
        EffectChain links = LoadChain(PathIn(folder, name), depth + 1);
        if (item.Has("params")) {
            Override(item.At("params"), links);
        }
        if (!chain.empty()) {
            FeedFromPrevious(item, links.front());
        }
        std::move(links.begin(), links.end(), std::back_inserter(chain));
    }
    if (chain.empty()) {
        root.At("chain").Fail("expected at least one effect");
    }
    if (root.Has("size")) {
        chain.front().size = ReadSize(root);
    }
    return chain;
}

EffectChain LoadChain(const std::string& folder, int depth) {
    const std::string file = PathIn(folder, "effect.json");
    if (depth > kDeepestChain) {
        throw ToolError(file + ": chains lie too deep in one another");
    }
    const JsonField root = JsonField::Load(file);
    if (root.Has("chain")) {
        return ReadChain(root, folder, depth);
    }
    return {ReadEffect(root, file, folder)};
}

}  // namespace

EffectChain LoadEffectFolder(const std::string& folder) {
    return LoadChain(folder, 0);
}

}  // namespace effect_render
