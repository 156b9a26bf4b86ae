#include "DirectXEffectMgr/Source/core/uniform_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "DirectXEffectMgr/Source/core/param_layout.h"

namespace {

struct Node : movit::Effect {
    std::string type_name() const override { return "Node"; }
};

std::string laid_out(const movit::Effect& node) {
    std::string text = "what was there";
    output_uniform_declarations(node, text);
    return text;
}

std::string plain(const movit::Effect& node, bool vertex_stage = false) {
    std::string text = "what was there";
    node.output_uniform_declarations(text, vertex_stage);
    return text;
}

// An entry in every table, registered backwards.
struct FullNode : Node {
    int32_t i = 0;
    float f[16] = {};

    FullNode() {
        register_instance_vec4("r", f, 1);
        register_instance_vec3("q", f, 1);
        register_instance_vec2("p", f, 1);
        register_instance_float("o", f, 1);
        register_instance_int("n", f, 1);
        register_vec4_array("m", f, 6);
        register_vec3_array("l", f, 5);
        register_vec2_array("k", f, 4);
        register_float_array("j", f, 3);
        register_int_array("i", f, 2);
        register_mat4("h", f);
        register_mat3("g", f);
        register_mat2("f", f);
        register_vec4("e", f);
        register_vec3("d", f);
        register_vec2("c", f);
        register_float("b", f);
        add_define("A", "vec2(1.0, 2.0)");
        register_int("a", &i);
    }
};

constexpr const char* kPlainBody =
    "uniform int PREFIX(a);\n"
    "#define A vec2(1.0, 2.0)\n"
    "uniform float PREFIX(b);\n"
    "uniform vec2 PREFIX(c);\n"
    "uniform vec3 PREFIX(d);\n"
    "uniform vec4 PREFIX(e);\n"
    "uniform mat2 PREFIX(f);\n"
    "uniform mat3 PREFIX(g);\n"
    "uniform mat4 PREFIX(h);\n"
    "uniform int PREFIX(i[2]);\n"
    "uniform float PREFIX(j[3]);\n"
    "uniform vec2 PREFIX(k[4]);\n"
    "uniform vec3 PREFIX(l[5]);\n"
    "uniform vec4 PREFIX(m[6]);\n";

TEST(UniformTextTest, NothingRegisteredGivesAnEmptyText) {
    EXPECT_EQ(laid_out(Node()), "");
    EXPECT_EQ(plain(Node()), "");
}

TEST(UniformTextTest, TheBaseBodyDeclaresAllTablesInOrder) {
    EXPECT_EQ(plain(FullNode()), std::string(kPlainBody) +
                                     "uniform int PREFIX(n);\n"
                                     "uniform float PREFIX(o);\n"
                                     "uniform vec2 PREFIX(p);\n"
                                     "uniform vec3 PREFIX(q);\n"
                                     "uniform vec4 PREFIX(r);\n");
    EXPECT_EQ(plain(FullNode(), true), plain(FullNode(), false));
}

TEST(UniformTextTest, TheBaseBodyDeclaresInstanceAttributesOfTheVertexStage) {
    FullNode node;
    node.instanced_attributes = true;
    EXPECT_EQ(plain(node, true),
              std::string(kPlainBody) +
                  "customize_in int PREFIX(n);\ncustomize_out int instance_n;\n"
                  "customize_in float PREFIX(o);\ncustomize_out float instance_o;\n"
                  "customize_in vec2 PREFIX(p);\ncustomize_out vec2 instance_p;\n"
                  "customize_in vec3 PREFIX(q);\ncustomize_out vec3 instance_q;\n"
                  "customize_in vec4 PREFIX(r);\ncustomize_out vec4 instance_r;\n");
}

// The semicolon at the end of each macro is wanted.
TEST(UniformTextTest, TheBaseBodyDeclaresInstanceAttributesOfTheFragmentStage) {
    FullNode node;
    node.instanced_attributes = true;
    EXPECT_EQ(plain(node, false),
              std::string(kPlainBody) +
                  "customize_in int instance_n;\n#define PREFIX(n) instance_n;\n"
                  "customize_in float instance_o;\n#define PREFIX(o) instance_o;\n"
                  "customize_in vec2 instance_p;\n#define PREFIX(p) instance_p;\n"
                  "customize_in vec3 instance_q;\n#define PREFIX(q) instance_q;\n"
                  "customize_in vec4 instance_r;\n#define PREFIX(r) instance_r;\n");
}

TEST(UniformTextTest, TheLaidOutBodyOfAllTables) {
    // int 0, float 4, vec2 16, vec3 32, vec4 48, mat2 64, mat3 80, mat4 128 (behind 116),
    // int[2] 192, float[3] 200, vec2[4] 224 (behind 212), vec3[5] 288 (behind 280),
    // vec4[6] 368 (behind 364), instances from 464: int, float, vec2 480, vec3 496, vec4 512.
    EXPECT_EQ(laid_out(FullNode()),
              "uniform int PREFIX(a);\n"
              "#define A vec2(1.0, 2.0)\n"
              "uniform float PREFIX(b);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform vec2 PREFIX(c);\n"
              "uniform float PLACEHOLDER_VALUE_2;\n"
              "uniform float PLACEHOLDER_VALUE_3;\n"
              "uniform vec3 PREFIX(d);\n"
              "uniform float PLACEHOLDER_VALUE_4;\n"
              "uniform vec4 PREFIX(e);\n"
              "uniform mat2 PREFIX(f);\n"
              "uniform mat3 PREFIX(g);\n"
              "uniform float PLACEHOLDER_VALUE_5;\n"
              "uniform float PLACEHOLDER_VALUE_6;\n"
              "uniform float PLACEHOLDER_VALUE_7;\n"
              "uniform mat4 PREFIX(h);\n"
              "uniform int PREFIX(i[2]);\n"
              "uniform float PREFIX(j[3]);\n"
              "uniform float PLACEHOLDER_VALUE_8;\n"
              "uniform float PLACEHOLDER_VALUE_9;\n"
              "uniform float PLACEHOLDER_VALUE_10;\n"
              "uniform vec2 PREFIX(k[4]);\n"
              "uniform float PLACEHOLDER_VALUE_11;\n"
              "uniform float PLACEHOLDER_VALUE_12;\n"
              "uniform vec3 PREFIX(l[5]);\n"
              "uniform float PLACEHOLDER_VALUE_13;\n"
              "uniform vec4 PREFIX(m[6]);\n"
              "uniform int PREFIX(n);\n"
              "uniform float PREFIX(o);\n"
              "uniform float PLACEHOLDER_VALUE_14;\n"
              "uniform float PLACEHOLDER_VALUE_15;\n"
              "uniform vec2 PREFIX(p);\n"
              "uniform float PLACEHOLDER_VALUE_16;\n"
              "uniform float PLACEHOLDER_VALUE_17;\n"
              "uniform vec3 PREFIX(q);\n"
              "uniform float PLACEHOLDER_VALUE_18;\n"
              "uniform vec4 PREFIX(r);\n");
}

TEST(UniformTextTest, TheWorkedCase) {
    Node node;
    int32_t mode = 0;
    float f[9] = {};
    node.register_int("mode", &mode);
    node.add_define("USE_X", "1");
    node.register_float("amount", f);
    node.register_vec2("iResolutionOrig", f);
    node.register_vec2("iResolution", f);
    node.register_vec3("tint", f);
    node.register_mat3("m", f);
    node.register_float_array("w", f, 4);
    EXPECT_EQ(laid_out(node),
              "uniform int PREFIX(mode);\n"
              "#define USE_X 1\n"
              "uniform float PREFIX(amount);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform vec2 PREFIX(iResolution);\n"
              "uniform float PLACEHOLDER_VALUE_2;\n"
              "uniform float PLACEHOLDER_VALUE_3;\n"
              "uniform vec2 PREFIX(iResolutionOrig);\n"
              "uniform float PLACEHOLDER_VALUE_4;\n"
              "uniform float PLACEHOLDER_VALUE_5;\n"
              "uniform vec3 PREFIX(tint);\n"
              "uniform float PLACEHOLDER_VALUE_6;\n"
              "uniform mat3 PREFIX(m);\n"
              "uniform float PREFIX(w[4]);\n");
}

TEST(UniformTextTest, TwoVec2BehindAFloat) {
    Node node;
    float f[2] = {};
    node.register_float("a", f);
    node.register_vec2("b", f);
    node.register_vec2("c", f);
    EXPECT_EQ(laid_out(node),
              "uniform float PREFIX(a);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform float PLACEHOLDER_VALUE_2;\n"
              "uniform vec2 PREFIX(b);\n"
              "uniform float PLACEHOLDER_VALUE_3;\n"
              "uniform float PLACEHOLDER_VALUE_4;\n"
              "uniform vec2 PREFIX(c);\n");
}

TEST(UniformTextTest, ThreeVec3InARow) {
    Node node;
    float f[3] = {};
    node.register_vec3("a", f);
    node.register_vec3("b", f);
    node.register_vec3("c", f);
    EXPECT_EQ(laid_out(node),
              "uniform vec3 PREFIX(a);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform vec3 PREFIX(b);\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform vec3 PREFIX(c);\n");
}

TEST(UniformTextTest, AnArrayOfOneIsStillAnArray) {
    Node node;
    float f[2] = {};
    node.register_vec2_array("a", f, 1);
    node.register_vec2_array("b", f, 1);
    EXPECT_EQ(laid_out(node),
              "uniform vec2 PREFIX(a[1]);\n"
              "uniform float PLACEHOLDER_VALUE_0;\n"
              "uniform float PLACEHOLDER_VALUE_1;\n"
              "uniform vec2 PREFIX(b[1]);\n");
}

TEST(UniformTextTest, CountsAreTheLow32BitsOfTheFirstPass) {
    Node node;
    const float f[2] = {};
    node.register_float_array("a", f, (uint64_t{7} << 32) + 2);
    node.register_float_array("b", f, 0xFFFFFFFFu);
    node.register_float_array("c", f, 5);
    EXPECT_TRUE(node.set_float_array_per_pass("c", {{f, 3}, {f, 9}}));
    node.register_float_array("d", f, 5);
    EXPECT_TRUE(node.set_float_array_per_pass("d", {}));
    EXPECT_EQ(laid_out(node),
              "uniform float PREFIX(a[2]);\n"
              "uniform float PREFIX(b[-1]);\n"
              "uniform float PREFIX(c[3]);\n"
              "uniform float PREFIX(d[0]);\n");
}

TEST(UniformTextTest, NamesMayBeLong) {
    Node node;
    float f = 0;
    const std::string name(10000, 'n');
    node.register_float(name, &f);
    node.add_define(name, name);
    EXPECT_EQ(laid_out(node),
              "#define " + name + " " + name + "\nuniform float PREFIX(" + name + ");\n");
}

// A member of a cbuffer as the shader compiler sees it.
struct Member {
    std::string name;
    std::string type;
    int32_t count = 1;
    bool is_array = false;
};

std::vector<Member> members_of(const std::string& text) {
    std::vector<Member> members;
    std::istringstream lines(text);
    std::string uniform, type, name;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 8, "uniform ") != 0) {
            continue;
        }
        std::istringstream words(line);
        words >> uniform >> type >> name;
        Member member;
        member.type = type;
        name = name.compare(0, 7, "PREFIX(") == 0 ? name.substr(7, name.size() - 9)
                                                  : name.substr(0, name.size() - 1);
        const size_t bracket = name.find('[');
        member.is_array = bracket != std::string::npos;
        member.count = member.is_array ? std::stoi(name.substr(bracket + 1)) : 1;
        member.name = name.substr(0, bracket);
        members.push_back(member);
    }
    return members;
}

// Bytes of one, for the types whose packing the fillers settle.
int32_t bytes_of(const std::string& type) {
    return type == "vec2" ? 8 : type == "vec3" ? 12 : type == "vec4" ? 16 : type == "mat4" ? 64 : 4;
}

// HLSL's packing: a member goes into free room of the current 16-byte register if it fits there
// whole; arrays and matrices begin a register, each array element too.
std::map<std::string, int32_t> packed_by_shader(const std::vector<Member>& members) {
    std::map<std::string, int32_t> offsets;
    int32_t end = 0;
    for (const Member& member : members) {
        const int32_t bytes = bytes_of(member.type);
        const bool new_register = member.is_array || bytes > 16 || end % 16 + bytes > 16;
        const int32_t begin = new_register ? (end + 15) / 16 * 16 : end;
        offsets[member.name] = begin;
        end = begin + (member.count - 1) * 16 + bytes;
    }
    return offsets;
}

uint32_t next_random(uint32_t& state) {
    state = state * 1664525 + 1013904223;
    return state >> 16;
}

// Every parameter's value is its own name's number, so that its place can be found in the bytes.
struct RandomNode : Node {
    std::vector<std::vector<float>> storage;
    std::vector<std::string> names;

    float* fresh(size_t floats) {
        storage.emplace_back(floats, static_cast<float>(1000 + names.size()));
        names.push_back("p" + std::to_string(names.size()));
        return storage.back().data();
    }

    void add(uint32_t choice, uint32_t count) {
        float* const f = fresh(64);
        const std::string& n = names.back();
        switch (choice) {
            case 0:
                return register_float(n, f);
            case 1:
                return register_vec2(n, f);
            case 2:
                return register_vec3(n, f);
            case 3:
                return register_vec4(n, f);
            case 4:
                return register_mat4(n, f);
            case 5:
                return register_vec2_array(n, f, count);
            case 6:
                return register_vec3_array(n, f, count);
            case 7:
                return register_vec4_array(n, f, count);
            case 8:
                return register_instance_float(n, f, 4);
            case 9:
                return register_instance_vec2(n, f, 4);
            case 10:
                return register_instance_vec3(n, f, 4);
            default:
                return register_instance_vec4(n, f, 4);
        }
    }
};

int32_t place_of(const std::vector<uint8_t>& shadow, size_t number) {
    const float wanted = static_cast<float>(1000 + number);
    for (size_t at = 0; at + 4 <= shadow.size(); at += 4) {
        float found;
        std::memcpy(&found, shadow.data() + at, 4);
        if (found == wanted) {
            return static_cast<int32_t>(at);
        }
    }
    return -1;
}

TEST(UniformTextTest, DeclarationsPackedByTheShaderLieWhereTheBytesAre) {
    uint32_t state = 99;
    for (int round = 0; round < 500; ++round) {
        RandomNode node;
        const uint32_t parameters = next_random(state) % 20;
        for (uint32_t i = 0; i < parameters; ++i) {
            node.add(next_random(state) % 12, 1 + next_random(state) % 5);
        }
        std::vector<uint8_t> shadow(static_cast<size_t>(param_buffer_size(node)));
        const PassLayout layout = fill_pass(node, 0, shadow);
        fill_instance(node, 2, 0, layout.instance_base, shadow);
        const std::string text = laid_out(node);
        const std::map<std::string, int32_t> packed = packed_by_shader(members_of(text));
        for (size_t i = 0; i < node.names.size(); ++i) {
            EXPECT_EQ(packed.at(node.names[i]), place_of(shadow, i)) << text;
        }
    }
}

}  // namespace
