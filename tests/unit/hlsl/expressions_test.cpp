#include <gtest/gtest.h>
#include "translate.h"
namespace glsl {
namespace {
TEST(Try, A) {
    std::cout << printFragment(
        "vec4 gl_FragCoord; uniform vec2 iResolution; const float PI = 3.14; vec4 FUNCNAME(vec2 "
        "tc) { for(int i=0;i<3;i++) { tc.x *= 2.0; } return INPUT1(tc) * 0.5; }");
    std::cout << expression("m2 * v2 + foo(bar(v2), i) - (m3*m3*m3)[1].xy") << classOf("m2*v2")
              << classOf("d") << classOf("s") << classOf("i3");
}
}  // namespace
}  // namespace glsl
