#include "pass_json.h"

#include <algorithm>
#include <cstdlib>

#include "files.h"
#include "param_json.h"

namespace effect_render {
namespace {

constexpr int32_t kMostVertices = 1 << 20;
constexpr int32_t kMostInstances = 1 << 20;
constexpr int32_t kMostCells = 1 << 10;  // of a grid, along one side

struct Grid {
    uint32_t columns;
    uint32_t rows;
};

Grid ReadGrid(const JsonField& field) {
    const std::vector<int32_t> cells = field.Integers(1, kMostCells);
    if (cells.size() != 2) {
        field.Fail("expected two numbers, columns and rows");
    }
    return {static_cast<uint32_t>(cells[0]), static_cast<uint32_t>(cells[1])};
}

// The three corners of both triangles of a cell, as steps to the right and up.
constexpr uint32_t kCellCorners[6][2] = {{0, 0}, {1, 0}, {0, 1}, {0, 1}, {1, 0}, {1, 1}};

template <typename Visit>
void ForEachCellCorner(const Grid& grid, Visit visit) {
    for (uint32_t row = 0; row < grid.rows; ++row) {
        for (uint32_t column = 0; column < grid.columns; ++column) {
            for (const auto& corner : kCellCorners) {
                visit(column + corner[0], row + corner[1]);
            }
        }
    }
}

// Places between 0 and 1: each corner of the grid once if an element list picks them, otherwise
// three for each triangle.
AttributeData GridAttribute(const Grid& grid, bool corners_are_shared) {
    AttributeData data;
    data.components = 2;
    const auto add = [&data, &grid](uint32_t column, uint32_t row) {
        data.values.push_back(static_cast<float>(column) / static_cast<float>(grid.columns));
        data.values.push_back(static_cast<float>(row) / static_cast<float>(grid.rows));
    };
    if (!corners_are_shared) {
        ForEachCellCorner(grid, add);
        return data;
    }
    for (uint32_t row = 0; row <= grid.rows; ++row) {
        for (uint32_t column = 0; column <= grid.columns; ++column) {
            add(column, row);
        }
    }
    return data;
}

ElementData GridElements(const Grid& grid) {
    ElementData elements;
    ForEachCellCorner(grid, [&elements, &grid](uint32_t column, uint32_t row) {
        elements.indices.push_back(row * (grid.columns + 1) + column);
    });
    return elements;
}

// Numbers from the list "data", or from the text file "file", which holds them between blanks.
std::vector<double> ReadData(const JsonField& field, const std::string& folder) {
    if (field.Has("data")) {
        return field.At("data").Numbers();
    }
    const std::string path = PathIn(folder, field.At("file").Text());
    const std::string text = ReadText(path);
    std::vector<double> numbers;
    const char* place = text.c_str();
    while (true) {
        char* end = nullptr;
        const double number = std::strtod(place, &end);
        if (end == place) {
            break;
        }
        numbers.push_back(number);
        place = end;
    }
    if (std::string_view(place).find_first_not_of(" \t\n") != std::string_view::npos) {
        field.At("file").Fail("'" + path + "' holds something that is no number");
    }
    return numbers;
}

AttributeData ReadAttribute(const JsonField& field, const std::string& folder, bool has_elements) {
    field.AllowOnly({"components", "data", "file", "grid"});
    if (field.Has("grid")) {
        return GridAttribute(ReadGrid(field.At("grid")), has_elements);
    }
    AttributeData attribute;
    attribute.components = static_cast<uint32_t>(field.At("components").Integer(1, 4));
    for (const double number : ReadData(field, folder)) {
        attribute.values.push_back(static_cast<float>(number));
    }
    if (attribute.values.empty() || attribute.values.size() % attribute.components != 0) {
        field.Fail("expected whole vertices of " + std::to_string(attribute.components) +
                   " number(s), found " + std::to_string(attribute.values.size()));
    }
    return attribute;
}

ElementData ReadElements(const JsonField& field, const std::string& folder) {
    field.AllowOnly({"per", "data", "file", "grid"});
    if (field.Has("grid")) {
        return GridElements(ReadGrid(field.At("grid")));
    }
    ElementData elements;
    elements.per_unit = field.Has("per") ? static_cast<uint32_t>(field.At("per").Integer(1, 3)) : 3;
    for (const double number : ReadData(field, folder)) {
        if (number < 0 || number >= kMostVertices || number != static_cast<uint32_t>(number)) {
            field.Fail("an index is no number of a vertex");
        }
        elements.indices.push_back(static_cast<uint32_t>(number));
    }
    if (elements.indices.empty() || elements.indices.size() % elements.per_unit != 0) {
        field.Fail("expected whole units of " + std::to_string(elements.per_unit) +
                   " indices, found " + std::to_string(elements.indices.size()));
    }
    return elements;
}

// What stands in `pass`, if there is one, or else at the top of the description.
std::optional<JsonField> Inherited(const std::optional<JsonField>& pass, const JsonField& root,
                                   const char* name) {
    if (pass && pass->Has(name)) {
        return pass->At(name);
    }
    if (root.Has(name)) {
        return root.At(name);
    }
    return std::nullopt;
}

void ReadVertexData(const JsonField& from, const std::string& folder, PassDescription& pass) {
    if (!from.Has("attributes")) {
        return;
    }
    for (const auto& [name, field] : from.At("attributes").Members()) {
        if (name.empty() || name == "element" || name.size() > 100) {
            field.Fail("this cannot be the name of an attribute");
        }
        pass.attributes[name] = ReadAttribute(field, folder, pass.elements.has_value());
    }
}

int32_t VertexCount(const std::optional<JsonField>& field, const PassDescription& pass) {
    if (field) {
        return field->Integer(1, kMostVertices);
    }
    const auto position = pass.attributes.find("position");
    if (position == pass.attributes.end()) {
        return 4;
    }
    return static_cast<int32_t>(position->second.values.size() / position->second.components);
}

void CheckVertexData(const JsonField& field, const PassDescription& pass) {
    const auto vertices = static_cast<size_t>(pass.vertices);
    for (const auto& [name, attribute] : pass.attributes) {
        const size_t given = attribute.values.size() / attribute.components;
        if (given < vertices) {
            field.Fail("attribute '" + name + "' has data for " + std::to_string(given) + " of " +
                       std::to_string(vertices) + " vertices");
        }
    }
    if (!pass.elements) {
        return;
    }
    for (const uint32_t index : pass.elements->indices) {
        if (index >= vertices) {
            field.Fail("element " + std::to_string(index) + " is past the last of " +
                       std::to_string(vertices) + " vertices");
        }
    }
}

// The unit square that the library draws by itself.
AttributeData Quad() {
    return {2, {0.0f, 1.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 0.0f}};
}

// Gives the pass data for an attribute that it does not name: each attribute needs an entry for
// every pass, with something to read for every vertex.
void FillAttribute(const std::string& name, uint32_t components, PassDescription& pass) {
    if (pass.attributes.count(name) != 0) {
        return;
    }
    const bool is_quad = pass.vertices == 4 && (name == "position" || name == "texcoord");
    if (is_quad) {
        pass.attributes[name] = Quad();
        return;
    }
    AttributeData zeros;
    zeros.components = components;
    zeros.values.assign(static_cast<size_t>(pass.vertices) * components, 0.0f);
    pass.attributes[name] = zeros;
}

void FillAttributes(std::vector<PassDescription>& passes) {
    std::map<std::string, uint32_t> names = {{"position", 2}, {"texcoord", 2}};
    for (const PassDescription& pass : passes) {
        for (const auto& [name, attribute] : pass.attributes) {
            names[name] = attribute.components;
        }
    }
    for (PassDescription& pass : passes) {
        for (const auto& [name, components] : names) {
            FillAttribute(name, components, pass);
        }
    }
}

std::string ReadProgram(const JsonField& field, const EffectDescription& effect) {
    std::string name = field.Text();
    const bool known =
        std::any_of(effect.programs.begin(), effect.programs.end(),
                    [&name](const ProgramDescription& program) { return program.name == name; });
    if (!known) {
        field.Fail("there is no program '" + name + "'");
    }
    return name;
}

void CheckInstances(const JsonField& field, const PassDescription& pass,
                    const EffectDescription& effect) {
    for (const ParamTrack& track : effect.params) {
        const bool too_few = track.type.shape == ParamShape::Instance &&
                             track.Count() < static_cast<size_t>(pass.instances);
        if (too_few) {
            field.Fail("parameter '" + track.name + "' has values for " +
                       std::to_string(track.Count()) + " of " + std::to_string(pass.instances) +
                       " instances");
        }
    }
}

// What only a pass of its own can say.
void ReadPassChoices(const JsonField& field, const EffectDescription& effect,
                     PassDescription& pass) {
    if (field.Has("program")) {
        pass.program = ReadProgram(field.At("program"), effect);
    }
    if (field.Has("depth-write")) {
        pass.depth_write = field.At("depth-write").Flag();
    }
    if (field.Has("params")) {
        pass.params = ReadOverrides(field.At("params"), effect);
    }
}

// @param field  the pass's own object; nothing where the description lists no passes
PassDescription ReadPass(const std::optional<JsonField>& field, const JsonField& root,
                         const std::string& folder, const EffectDescription& effect) {
    const JsonField& place = field ? *field : root;
    PassDescription pass;
    if (const auto elements = Inherited(field, root, "elements")) {
        pass.elements = ReadElements(*elements, folder);
    }
    ReadVertexData(root, folder, pass);
    if (field) {
        ReadVertexData(*field, folder, pass);
        ReadPassChoices(*field, effect, pass);
    }
    pass.vertices = VertexCount(Inherited(field, root, "vertices"), pass);
    if (pass.vertices != 4 && pass.attributes.count("position") == 0) {
        place.Fail("'position' needs data for " + std::to_string(pass.vertices) + " vertices");
    }
    CheckVertexData(place, pass);
    if (const auto instances = Inherited(field, root, "instances")) {
        pass.instances = instances->Integer(0, kMostInstances);
        CheckInstances(*instances, pass, effect);
    }
    return pass;
}

}  // namespace

std::vector<PassDescription> ReadPasses(const JsonField& root, const std::string& folder,
                                        const EffectDescription& effect) {
    std::vector<PassDescription> passes;
    if (!root.Has("passes")) {
        passes.push_back(ReadPass(std::nullopt, root, folder, effect));
        FillAttributes(passes);
        return passes;
    }
    for (const JsonField& field : root.At("passes").Items()) {
        field.AllowOnly({"vertices", "instances", "program", "depth-write", "params", "attributes",
                         "elements"});
        passes.push_back(ReadPass(field, root, folder, effect));
    }
    if (passes.empty()) {
        root.At("passes").Fail("expected at least one pass");
    }
    FillAttributes(passes);
    return passes;
}

}  // namespace effect_render
