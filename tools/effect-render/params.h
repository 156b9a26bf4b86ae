#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace effect_render {

/// The library's parameter types.
enum class ParamKind { Int, Float, Vec2, Vec3, Vec4, Mat2, Mat3, Mat4 };

/// How many values a parameter has.
enum class ParamShape {
    Plain,     // one
    Array,     // a fixed number, all visible to the shader
    Instance,  // one per instance, the shader sees the one of the instance being drawn
};

struct ParamType {
    ParamKind kind = ParamKind::Float;
    ParamShape shape = ParamShape::Plain;

    friend bool operator==(const ParamType& p, const ParamType& q) {
        return p.kind == q.kind && p.shape == q.shape;
    }
};

/// Numbers in one value: 1 for int and float, 2 to 4 for vectors, 4, 9 or 16 for matrices.
size_t Components(ParamKind kind);

/// The type as written: "vec3", "float[]", "instance-vec4".
std::string TypeText(ParamType type);

/// The reverse; nothing for any other text. Matrices have no arrays and no instance form.
std::optional<ParamType> ParseType(std::string_view text);

/// A parameter and its course over the frames.
struct ParamTrack {
    std::string name;
    ParamType type;
    std::vector<double> still;  // the value where nothing moves; all elements in a row
    std::vector<double> first;  // value at the first frame and at the last one, of the same
    std::vector<double> last;   // size as `still`; both empty for a parameter that never moves

    /// Number of elements: 1 for a plain parameter.
    size_t Count() const { return still.size() / Components(type.kind); }

    /// @param way  0 at the first frame, 1 at the last; nothing where there is one frame only
    std::vector<double> At(std::optional<double> way) const;
};

/// Reads "NAME=V[,V...]" of a command line, where each V is a number or a course A:B. Throws a
/// UsageError that shows the text.
ParamTrack ParseParam(ParamKind kind, const std::string& text);

/// Values as the library takes them: 32-bit integers for an int, floats for everything else.
struct PackedValues {
    std::vector<int32_t> ints;
    std::vector<float> floats;

    const void* Data() const;
};

PackedValues PackValues(ParamKind kind, const std::vector<double>& values);

}  // namespace effect_render
