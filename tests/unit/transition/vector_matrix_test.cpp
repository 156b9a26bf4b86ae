#include "transition/vector_matrix.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

struct ProductCase {
    const char* text;
    const char* expected;
};
void PrintTo(const ProductCase& c, std::ostream* out) {
    *out << c.text;
}

class VectorMatrixTest : public testing::TestWithParam<ProductCase> {};

TEST_P(VectorMatrixTest, RightMatrixIsTransposed) {
    const std::string names =
        "vec2 v; vec3 w; float s; mat2 m; vec2 f(float a) {} mat3 r(float a) {}\n";
    std::vector<std::string> notes;
    EXPECT_EQ(transpose_right_matrices(names + GetParam().text, notes),
              names + GetParam().expected);
    EXPECT_EQ(notes.empty(), std::string(GetParam().text) == GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Products, VectorMatrixTest,
    testing::Values(
        ProductCase{"x = v * m;", "x = (transpose(m) * v);"},
        ProductCase{"x = 1.0 + v * m;", "x = 1.0 + (transpose(m) * v);"},
        ProductCase{"x = v * mat2(1, 2, 3, 4) + v;", "x = (transpose(mat2(1, 2, 3, 4)) * v) + v;"},
        ProductCase{"x = w.xy * m;", "x = (transpose(m) * w.xy);"},
        ProductCase{"x = vec2(1, s) * m;", "x = (transpose(m) * vec2(1, s));"},
        ProductCase{"x = f(s) * m;", "x = (transpose(m) * f(s));"},
        ProductCase{"x = w * r(s);", "x = (transpose(r(s)) * w);"},
        ProductCase{"v *= m;", "v = transpose(m) * v;"},
        ProductCase{"v *= mat2(1, 2, 3, 4);", "v = transpose(mat2(1, 2, 3, 4)) * v;"},
        // the same in both
        ProductCase{"x = m * v;", "x = m * v;"}, ProductCase{"x = s * m;", "x = s * m;"},
        ProductCase{"x = m * m;", "x = m * m;"}, ProductCase{"x = v * m[0];", "x = v * m[0];"},
        ProductCase{"x = v.x * m;", "x = v.x * m;"}, ProductCase{"x = v * s;", "x = v * s;"},
        ProductCase{"m *= m;", "m *= m;"}, ProductCase{"v *= s;", "v *= s;"},
        // not plain to see
        ProductCase{"x = m * v * m;", "x = m * v * m;"},
        ProductCase{"x = (v + v) * m;", "x = (v + v) * m;"},
        ProductCase{"float v; x = v * m;", "float v; x = v * m;"}, ProductCase{"v *", "v *"},
        ProductCase{"x = v * m", "x = v * m"}, ProductCase{"* m;", "* m;"}));

}  // namespace
}  // namespace transition
