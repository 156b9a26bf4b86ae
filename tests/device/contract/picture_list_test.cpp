#include "contract/picture_host.h"

#include <vector>

namespace {

using contract::PictureTest;
using host::Effect;
using host::Lines;

class PictureListTest : public PictureTest {
protected:
    InputTexture record(const void* data) {
        InputTexture made{};
        made.width = 2;
        made.height = 2;
        made.pitch = 8;
        made.depth = 1;
        made.channels = 4;
        made.filter = 9729;
        made.source_kind = 1;
        made.pixels = data;
        return made;
    }
    std::vector<const void*> sources() {
        std::vector<const void*> found;
        for (const fake::Call& call : world.callsOf("UpdateSubresource")) {
            found.push_back(call.source);
        }
        return found;
    }
};

TEST_F(PictureListTest, EachPassGetsItsPictureAndPassesPastTheEndTheFirst) {
    effect->SetVertexCounts({4, 4, 4});
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{pixels, other}), sources());
    Lines bound;
    for (const fake::Call& call : world.callsOf("PSSetShaderResources")) {
        bound.push_back(call.arguments);
    }
    EXPECT_EQ((Lines{"0, [srv#2]", "0, [srv#3]", "0, [srv#2]", "0, [null]"}), bound);
}

TEST_F(PictureListTest, ANewListRetiresTheOldPicturesWithTheNextDraw) {
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ(2u, textures());
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(other), record(pixels)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{other, pixels}), sources());
    EXPECT_EQ(0u, textures()) << "both came back from the pool";
}

TEST_F(PictureListTest, UpdateTakesThePicturesAsStillOnes) {
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ(2u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    drawOnce();
    EXPECT_EQ(0u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(pixels)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{pixels}), sources()) << "the one that changed";
}

TEST_F(PictureListTest, AStaleMarkOfTheHostForcesAnUpload) {
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels)}));
    drawOnce();
    InputTexture stale = record(pixels);
    stale.still_stale = true;
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {stale}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

TEST_F(PictureListTest, UpdateTakesAReadyTextureAway) {
    const Effect source = makeEffectOf(host::kRed);
    ASSERT_EQ(0, init(source));
    ASSERT_EQ(0, draw(source));
    EXPECT_EQ(0, effect->SetInputTextureNum(0, *source->GetOutputTexture(), 67, 41, 268));
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels)}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

TEST_F(PictureListTest, FieldsOfTheLibraryInAHostsRecordAreNotTrusted) {
    InputTexture wild = record(pixels);
    wild.texture = reinterpret_cast<GpuData*>(0x10);
    wild.still_texture = reinterpret_cast<GpuData*>(0x10);
    wild.expanded_pixels = reinterpret_cast<uint8_t*>(0x10);
    wild.expanded_width = wild.expanded_height = 2;
    wild.uploaded = true;
    EXPECT_EQ(0, effect->SetInputTextureList(0, {wild}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {wild}));
    drawOnce();
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {wild, wild}));
    drawOnce();
}

}  // namespace
