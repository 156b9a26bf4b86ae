#include "DirectXEffectMgr/Source/core/program_source.h"

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

// What a source is called in a map if it did not come from a file.
constexpr const char* kTextName = "<text>";

// A text with its origins, where somebody asks for them.
struct MappedText {
    std::string text;
    OriginMap origins;
};

// Brings one stage's texts together.
class StageAssembler {
public:
    StageAssembler(const StageSources& sources, const ProgramSources& program, SourceMap* map)
        : sources_(sources), context_{*program.files, program.base64, map} {}

    // The stage's own source, from its text or its file; either may be empty.
    void pick(const std::string& text, bool read_file) {
        if (!text.empty() || !read_file) {
            main_.text = text;
            main_file_ = add_file(kTextName, main_.text);
        } else {
            main_.text = read(sources_.path);
            main_file_ = add_file(sources_.path, main_.text);
        }
    }

    bool empty() const { return main_.text.empty(); }

    // Expands includes and puts the segments in front.
    bool join() {
        MappedText whole;
        OriginMap main_origins;
        if (!ExpandIncludes(sources_.path, main_.text, context_, asked(main_origins), main_file_)) {
            return false;
        }
        for (size_t i = 0; i < sources_.segment_indices.size(); ++i) {
            if (!add_segment(i, whole)) {
                return false;
            }
        }
        whole.text += main_.text;
        whole.origins.append_slice(main_origins, 0, main_origins.size());
        main_ = std::move(whole);
        return true;
    }

    // Prelude, declarations and expanded source, as the parser gets them.
    std::string finish(std::string_view prelude, const std::string& uniforms) {
        OriginMap origins;
        OriginMap prefixed_origins;
        if (context_.map != nullptr) {
            append_generated("<prelude>", prelude, origins);
            append_generated("<parameters>", uniforms, origins);
        }
        const OriginMap* const from = context_.map == nullptr ? nullptr : &main_.origins;
        const std::string prefixed =
            ExpandPrefix(main_.text, kPrefixWord, from, asked(prefixed_origins));
        const std::string source = ExpandDrawInstance(
            prefixed, kPrefixWord, context_.map == nullptr ? nullptr : &prefixed_origins,
            asked(origins));
        std::string result;
        result.reserve(prelude.size() + uniforms.size() + source.size());
        result.append(prelude).append(uniforms).append(source);
        if (context_.map != nullptr) {
            context_.map->origins = std::move(origins);
        }
        return result;
    }

private:
    OriginMap* asked(OriginMap& origins) { return context_.map == nullptr ? nullptr : &origins; }

    uint32_t add_file(const std::string& name, const std::string& text) {
        return context_.map == nullptr ? 0 : context_.map->add_file(name, text);
    }

    void append_generated(const char* name, std::string_view text, OriginMap& origins) {
        const uint32_t file = context_.map->add_file(name, std::string(text), true);
        origins.append_copy(file, 0, text.size());
    }

    std::string read(const std::string& path) {
        ReadStatus status;
        std::string text = ReadShaderFile(path, context_.base64, context_.files, &status);
        if (context_.map != nullptr && status != ReadStatus::kRead) {
            context_.map->problems.push_back(SourceProblem{status, path, std::nullopt});
        }
        return text;
    }

    bool add_segment(size_t segment, MappedText& whole) {
        const int32_t variant = sources_.segment_indices[segment];
        const bool known = segment < sources_.segments.size() && variant >= 0 &&
                           static_cast<size_t>(variant) < sources_.segments[segment].size();
        if (!known) {
            log_error("segment %d has no variant %d", static_cast<int>(segment), variant);
            return false;
        }
        const std::string& path = sources_.segments[segment][static_cast<size_t>(variant)];
        std::string text = read(path);
        const uint32_t file = add_file(path, text);
        if (!ExpandIncludes(path, text, context_, asked(whole.origins), file)) {
            return false;
        }
        whole.text += text;
        return true;
    }

    const StageSources& sources_;
    const AssemblyContext context_;
    MappedText main_;
    uint32_t main_file_ = 0;
};

void pick_sources(const ProgramSources& sources, StageAssembler& fragment, StageAssembler& vertex) {
    const bool has_vertex_path = !sources.vertex.path.empty();
    if (sources.use_given) {
        fragment.pick(sources.fragment.given, true);
        vertex.pick(sources.vertex.given, has_vertex_path);
        return;
    }
    // On purpose: the fragment text alone decides, for both stages. A host that sets it without a
    // vertex text wants the fixed vertex shader, and a vertex text on its own is not used.
    fragment.pick(sources.fragment.text, true);
    if (sources.fragment.text.empty()) {
        vertex.pick(std::string(), has_vertex_path);
    } else {
        vertex.pick(sources.vertex.text, false);
    }
}

}  // namespace

bool AssembleProgram(const ProgramSources& sources, const std::string& uniforms,
                     AssembledProgram& out, ProgramMaps* maps) {
    StageAssembler fragment(sources.fragment, sources, maps == nullptr ? nullptr : &maps->fragment);
    StageAssembler vertex(sources.vertex, sources, maps == nullptr ? nullptr : &maps->vertex);
    pick_sources(sources, fragment, vertex);
    if (!fragment.join()) {
        return false;
    }
    const std::string declarations = ExpandPrefix(uniforms, kPrefixWord);
    AssembledProgram assembled;
    assembled.fragment = fragment.finish(kFragmentPrelude, declarations);
    // Where a vertex source is missing altogether, its segments are not looked at either.
    assembled.has_vertex = !vertex.empty();
    if (assembled.has_vertex) {
        if (!vertex.join()) {
            return false;
        }
        assembled.vertex = vertex.finish(kVertexPrelude, declarations);
    }
    out = std::move(assembled);
    return true;
}
