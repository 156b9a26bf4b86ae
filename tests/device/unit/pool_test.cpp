#include "DirectXEffectMgr/Source/resource_pool_dx.h"

#include <d3d11.h>
#include <gtest/gtest.h>

#include <thread>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/shared_pool.h"
#include "fake/world.h"
#include "host/log_capture.h"
#include "model/draw_model.h"

namespace {

using Lines = std::vector<std::string>;

constexpr uint32_t kRgba8 = 32856;
constexpr uint32_t kRgba32f = 34836;
constexpr size_t kBudget = 26214400;

// The shortest pair that the compiler takes and that the checks of the texts accept.
std::string vertexText(int number = 0) {
    return "// " + std::to_string(number) +
           "\nvoid main(){}\nfloat4 mainVS() : SV_Position { return 0; }\n";
}
std::string fragmentText(int number = 0) {
    return "// FUNCNAME " + std::to_string(number) +
           "\nfloat4 mainPS() : SV_Target { return 1; }\n";
}

class PoolTest : public testing::Test {
protected:
    void SetUp() override {
        host::log::clear();
        set_log_callback(host::log::receive);
    }
    void TearDown() override { EXPECT_EQ(Lines(), world.errors()); }

    GpuData make(uint32_t width, uint32_t height, uint32_t format = kRgba8) {
        return pool->create_texture(world.device(), format, width, height);
    }
    bool alive(ID3D11Texture2D* texture) { return world.references(texture) > 0; }

    fake::World world;
    ID3D11Device* device = world.device();
    ID3D11DeviceContext* context = world.immediate();
    std::unique_ptr<ResourcePoolDX> pool =
        std::make_unique<ResourcePoolDX>(&device, &context, 100, kBudget, 25);
};

// Textures.

TEST_F(PoolTest, AReleasedTextureComesBackWithoutADeviceCall) {
    GpuData texture = make(4, 4);
    const GpuData former = texture;
    pool->release_texture(texture);
    EXPECT_EQ(nullptr, texture.texture);
    EXPECT_EQ(nullptr, texture.srv);
    EXPECT_EQ(nullptr, texture.sampler);
    world.clearCalls();
    const GpuData again = make(4, 4);
    EXPECT_EQ(former.texture, again.texture);
    EXPECT_EQ(former.srv, again.srv);
    EXPECT_EQ(former.sampler, again.sampler);
    EXPECT_EQ(Lines(), world.texts());
}

TEST_F(PoolTest, TheOneReleasedLastComesBackFirst) {
    GpuData first = make(4, 4);
    GpuData second = make(4, 4);
    ID3D11Texture2D* newest = second.texture;
    pool->release_texture(first);
    pool->release_texture(second);
    EXPECT_EQ(newest, make(4, 4).texture);
}

struct Mismatch {
    const char* name;
    uint32_t width, height, format;
};

TEST_F(PoolTest, AnotherSizeOrCodeMakesANewTexture) {
    GpuData texture = make(4, 4);
    ID3D11Texture2D* former = texture.texture;
    pool->release_texture(texture);
    for (const Mismatch& other : {Mismatch{"height", 4, 5, kRgba8}, Mismatch{"width", 5, 4, kRgba8},
                                  Mismatch{"code", 4, 4, kRgba32f}}) {
        EXPECT_NE(former, make(other.width, other.height, other.format).texture) << other.name;
    }
    EXPECT_TRUE(alive(former));
}

TEST_F(PoolTest, AStrangersValueIsLeftAsItIs) {
    GpuData stranger;
    stranger.texture = reinterpret_cast<ID3D11Texture2D*>(0x10);
    pool->release_texture(stranger);
    EXPECT_EQ(reinterpret_cast<ID3D11Texture2D*>(0x10), stranger.texture);
}

TEST_F(PoolTest, TheFourthFullHdFrameEvictsTheOldest) {
    // 8294400 bytes each: three are 24883200, the fourth makes 33177600 over 26214400.
    GpuData frames[4];
    ID3D11Texture2D* textures[4];
    for (int i = 0; i < 4; ++i) {
        frames[i] = make(1920, 1080);
        textures[i] = frames[i].texture;
    }
    for (int i = 0; i < 3; ++i) {
        pool->release_texture(frames[i]);
    }
    EXPECT_TRUE(alive(textures[0]));
    world.clearCalls();
    pool->release_texture(frames[3]);
    EXPECT_FALSE(alive(textures[0]));
    EXPECT_TRUE(alive(textures[1]));
    EXPECT_TRUE(alive(textures[3]));
    EXPECT_EQ((Lines{"device.GetDeviceRemovedReason()"}), world.texts());
}

TEST_F(PoolTest, ExactlyTheBudgetEvictsNothingAndOnePixelMoreDoes) {
    // 2560 x 2560 x 4 is 26214400.
    GpuData whole = make(2560, 2560);
    ID3D11Texture2D* texture = whole.texture;
    pool->release_texture(whole);
    EXPECT_TRUE(alive(texture));
    GpuData pixel = make(1, 1);
    ID3D11Texture2D* newest = pixel.texture;
    pool->release_texture(pixel);
    EXPECT_FALSE(alive(texture));
    EXPECT_TRUE(alive(newest));
}

TEST_F(PoolTest, ATextureLargerThanTheBudgetPassesThrough) {
    GpuData small = make(4, 4);
    ID3D11Texture2D* kept = small.texture;
    pool->release_texture(small);
    GpuData large = make(5000, 5000);
    ID3D11Texture2D* gone = large.texture;
    pool->release_texture(large);
    EXPECT_FALSE(alive(gone));
    EXPECT_EQ(nullptr, large.texture);
    // Evicting goes from the oldest on, so that the small one went before the large one did.
    EXPECT_FALSE(alive(kept));
}

TEST_F(PoolTest, TheBudgetCountsTheCodesBytesAndNotTheDevices) {
    // 1280 x 1280 x 16 is 26214400: one fits, the same texture as RGBA8 would count a quarter.
    GpuData first = make(1280, 1280, kRgba32f);
    GpuData second = make(1280, 1280, kRgba8);
    ID3D11Texture2D* oldest = first.texture;
    pool->release_texture(first);
    EXPECT_TRUE(alive(oldest));
    pool->release_texture(second);
    EXPECT_FALSE(alive(oldest));
}

TEST_F(PoolTest, ALostDeviceIsReportedAtAnEviction) {
    GpuData large = make(5000, 5000);
    world.setRemovedReason(static_cast<HRESULT>(0x887A0006));
    pool->release_texture(large);
    ASSERT_EQ(1u, host::log::errors().size());
    EXPECT_EQ(0u, host::log::errors()[0].find("DX error 0x887a0006 DXGI_ERROR_DEVICE_HUNG at "
                                              "src/DirectXEffectMgr/Source/resource_pool_dx"));
}

TEST_F(PoolTest, TrimmingWithinTheBudgetDoesNothing) {
    GpuData texture = make(4, 4);
    ID3D11Texture2D* kept = texture.texture;
    pool->release_texture(texture);
    world.clearCalls();
    pool->trim_textures();
    EXPECT_TRUE(alive(kept));
    EXPECT_EQ(Lines(), world.texts());
}

struct FormatRow {
    uint32_t code;
    const char* format;
};

TEST_F(PoolTest, CodesOfOneChannelKeepItAndAllOthersAreFourBytes) {
    const FormatRow rows[] = {{6409, "R8_UNORM"},        {33326, "R32_FLOAT"},
                              {32856, "B8G8R8A8_UNORM"}, {34836, "B8G8R8A8_UNORM"},
                              {35907, "B8G8R8A8_UNORM"}, {33321, "B8G8R8A8_UNORM"},
                              {0, "B8G8R8A8_UNORM"}};
    for (const FormatRow& row : rows) {
        world.clearCalls();
        make(4, 2, row.code);
        const std::string format = row.format;
        const std::string texture = "device.CreateTexture2D(4x2 mips=1 array=1 format=" + format +
                                    " samples=1/0 usage=DEFAULT bind=SHADER_RESOURCE cpu=0 misc=0)";
        EXPECT_EQ(0u, world.texts().at(0).find(texture)) << row.code;
        EXPECT_NE(std::string::npos,
                  world.texts().at(1).find(", " + format + " TEXTURE2D mip=0 levels=1)"));
        EXPECT_EQ(0u, world.texts().at(2).find(std::string("device.CreateSamplerState(") +
                                               model::kColourSampler));
    }
}

TEST_F(PoolTest, WhatAFailedCreationHasMadeIsTheCallers) {
    world.failNth("CreateTexture2D", 1);
    const GpuData nothing = make(4, 4);
    EXPECT_EQ(nullptr, nothing.texture);
    world.failNth("CreateShaderResourceView", 1);
    GpuData texture_only = make(4, 4);
    EXPECT_NE(nullptr, texture_only.texture);
    EXPECT_EQ(nullptr, texture_only.srv);
    world.failNth("CreateSamplerState", 1);
    GpuData no_sampler = make(4, 4);
    EXPECT_NE(nullptr, no_sampler.srv);
    EXPECT_EQ(nullptr, no_sampler.sampler);
    EXPECT_EQ((Lines{"CreateTexture2D failed!", "CreateShaderResourceView failed!",
                     "CreateSamplerState failed!"}),
              host::log::errors());
    ID3D11Texture2D* owned = texture_only.texture;
    pool->release_texture(texture_only);
    EXPECT_EQ(owned, texture_only.texture) << "the pool does not know it";
    owned->Release();
    no_sampler.texture->Release();
    no_sampler.srv->Release();
}

TEST_F(PoolTest, TheEndReleasesWhatIsFreeAndNotWhatIsInUse) {
    GpuData free = make(4, 4);
    GpuData used = make(8, 8);
    pool->release_texture(free);
    world.clearCalls();
    pool.reset();
    EXPECT_EQ((Lines{"device.GetDeviceRemovedReason()"}), world.texts());
    EXPECT_EQ((Lines{"texture#2: 1", "srv#2: 1", "sampler#2: 1"}), world.live());
    used.texture->Release();
    used.srv->Release();
    used.sampler->Release();
}

// Programs.

class ProgramPoolTest : public PoolTest {
protected:
    bool compile(ProgramRecord& out, int number = 0) {
        return pool->compile_program(out, vertexText(number), fragmentText(number));
    }
    int compiled() { return world.created(fake::Kind::pixel_shader); }
};

TEST_F(ProgramPoolTest, TheSameTextsCompileOnceAndCountTheirUsers) {
    ProgramRecord first{};
    ProgramRecord second{};
    ASSERT_TRUE(compile(first)) << host::log::all();
    ASSERT_TRUE(compile(second));
    EXPECT_EQ(1, compiled());
    EXPECT_EQ(first.pixel_shader, second.pixel_shader);
    EXPECT_EQ(first.vertex_shader, second.vertex_shader);
    EXPECT_EQ(first.vs_blob, second.vs_blob);
    EXPECT_EQ((Lines{"device.CreatePixelShader(code) -> pixel_shader#1",
                     "device.CreateVertexShader(code) -> vertex_shader#1"}),
              world.texts());
    pool->release_program(first);
    pool->release_program(second);
    pool.reset();
    EXPECT_EQ(Lines(), world.live());
}

TEST_F(ProgramPoolTest, AnyDifferenceIsAnotherProgram) {
    ProgramRecord one{};
    ProgramRecord other{};
    ASSERT_TRUE(pool->compile_program(one, vertexText(), fragmentText()));
    ASSERT_TRUE(pool->compile_program(other, vertexText() + " ", fragmentText()));
    EXPECT_NE(one.pixel_shader, other.pixel_shader);
    EXPECT_EQ(2, compiled());
}

TEST_F(ProgramPoolTest, AnUnusedProgramIsRevived) {
    ProgramRecord first{};
    ASSERT_TRUE(compile(first));
    pool->release_program(first);
    ProgramRecord again{};
    ASSERT_TRUE(compile(again));
    EXPECT_EQ(first.pixel_shader, again.pixel_shader);
    EXPECT_EQ(1, compiled());
}

TEST_F(ProgramPoolTest, TheHundredAndFirstUnusedProgramPushesTheOldestOut) {
    std::vector<ProgramRecord> programs(101);
    for (int i = 0; i < 101; ++i) {
        ASSERT_TRUE(compile(programs[static_cast<size_t>(i)], i)) << host::log::all();
    }
    for (int i = 0; i < 100; ++i) {
        pool->release_program(programs[static_cast<size_t>(i)]);
    }
    EXPECT_EQ(1, world.references(programs[0].pixel_shader));
    pool->release_program(programs[100]);
    EXPECT_EQ(0, world.references(programs[0].pixel_shader));
    EXPECT_EQ(0, world.references(programs[0].vertex_shader));
    EXPECT_EQ(1, world.references(programs[1].pixel_shader));
    ProgramRecord again{};
    ASSERT_TRUE(compile(again, 0));
    EXPECT_EQ(102, compiled()) << "its text compiles anew";
    ASSERT_TRUE(compile(again, 100));
    EXPECT_EQ(102, compiled());
}

TEST_F(ProgramPoolTest, AStrangersProgramIsIgnored) {
    ProgramRecord stranger{};
    pool->release_program(stranger);
    ProgramRecord known{};
    ASSERT_TRUE(compile(known));
    pool->release_program(known);
    pool->release_program(known);  // in use by nobody: ignored
    ProgramRecord again{};
    ASSERT_TRUE(compile(again));
    EXPECT_EQ(1, compiled());
}

TEST_F(ProgramPoolTest, TextsWithoutTheUsualMarksWarnAndAreCompiledAllTheSame) {
    ProgramRecord program{};
    EXPECT_TRUE(pool->compile_program(program, "float4 mainVS() : SV_Position { return 0; }",
                                      "float4 mainPS() : SV_Target { return 1; }"));
    const std::vector<host::LogLine> lines = host::log::lines();
    ASSERT_EQ(4u, lines.size());
    EXPECT_EQ("   1:float4 mainVS() : SV_Position { return 0; }", lines[0].text);
    EXPECT_EQ("vertex_shader maybe wrong\n", lines[1].text);
    EXPECT_EQ(3, lines[1].level);
    EXPECT_EQ("   1:float4 mainPS() : SV_Target { return 1; }", lines[2].text);
    EXPECT_EQ("fragment_shader maybe wrong\n", lines[3].text);
}

TEST_F(ProgramPoolTest, AFailedFragmentTextIsDumpedAndNothingIsKept) {
    ProgramRecord program{};
    EXPECT_FALSE(pool->compile_program(program, vertexText(), "// FUNCNAME\nno text\n"));
    EXPECT_EQ((Lines{"   1:// FUNCNAME", "   2:no text"}), host::log::texts(2));
    ASSERT_EQ(1u, host::log::errors().size());
    EXPECT_EQ(0u, host::log::errors()[0].find("Failed to compile frag shader: "));
    EXPECT_EQ("Failed to compile frag shader: %s", host::log::lines().back().format);
    EXPECT_EQ(Lines(), world.texts());
    EXPECT_EQ(nullptr, program.pixel_shader);
    EXPECT_FALSE(pool->compile_program(program, vertexText(), "// FUNCNAME\nno text\n"));
    EXPECT_EQ(2u, host::log::errors().size()) << "compiled again";
}

TEST_F(ProgramPoolTest, AFailedVertexTextComesBehindTheFragmentShader) {
    ProgramRecord program{};
    EXPECT_FALSE(pool->compile_program(program, "void main(){} no text", fragmentText()));
    EXPECT_EQ(0u, host::log::errors().at(0).find("Failed to compile vertex shader: "));
    EXPECT_EQ(1, compiled());
    EXPECT_EQ(Lines(), world.live()) << "the fragment shader is not left behind";
}

TEST_F(ProgramPoolTest, ARefusedShaderIsSilent) {
    ProgramRecord program{};
    for (const char* method : {"CreatePixelShader", "CreateVertexShader"}) {
        world.failNth(method, 1);
        EXPECT_FALSE(compile(program));
        EXPECT_EQ(Lines(), host::log::errors());
        EXPECT_EQ(Lines(), world.live());
    }
    EXPECT_TRUE(compile(program));
}

TEST_F(ProgramPoolTest, TheEndReleasesUnusedProgramsAndNotThoseInUse) {
    ProgramRecord unused{};
    ProgramRecord used{};
    ASSERT_TRUE(compile(unused, 1));
    ASSERT_TRUE(compile(used, 2));
    pool->release_program(unused);
    pool.reset();
    EXPECT_EQ((Lines{"pixel_shader#2: 1", "vertex_shader#2: 1"}), world.live());
}

TEST_F(ProgramPoolTest, ThreadsShareIt) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < 50; ++i) {
                ProgramRecord program{};
                EXPECT_TRUE(compile(program, (i + t) % 3));
                GpuData texture = make(4, 4);
                pool->release_texture(texture);
                pool->trim_textures();
                pool->release_program(program);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(3, compiled());
    pool.reset();
    EXPECT_EQ(Lines(), world.live());
}

// The process's one pool and the thread that may end it.

class SharedPoolTest : public PoolTest {
protected:
    std::shared_ptr<PoolHome> home(fake::World& on, DWORD thread) {
        auto made = std::make_shared<PoolHome>();
        made->device.device = on.device();
        made->device.immediate_context = on.immediate();
        made->thread_id = thread;
        return made;
    }
    void useATexture() {
        GpuData texture = SharedPool()->create_texture(world.device(), kRgba8, 4, 4);
        SharedPool()->release_texture(texture);
    }
};

TEST_F(SharedPoolTest, IsDeletedOnItsOwnThread) {
    SetUpSharedPool(home(world, GetCurrentThreadId()));
    useATexture();
    EXPECT_FALSE(world.live().empty());
    ClearSharedPool();
    EXPECT_EQ(nullptr, SharedPool());
    EXPECT_EQ(Lines(), world.live());
}

TEST_F(SharedPoolTest, StaysAllocatedOnAnyOtherThread) {
    // On purpose: device objects are never released from a foreign thread.
    SetUpSharedPool(home(world, GetCurrentThreadId()));
    useATexture();
    std::thread(ClearSharedPool).join();
    EXPECT_EQ(nullptr, SharedPool());
    EXPECT_EQ((Lines{"texture#1: 1", "srv#1: 1", "sampler#1: 1"}), world.live());
}

TEST_F(SharedPoolTest, TheNextPoolReplacesTheFormer) {
    SetUpSharedPool(home(world, GetCurrentThreadId()));
    useATexture();
    fake::World other;
    SetUpSharedPool(home(other, GetCurrentThreadId()));
    EXPECT_EQ(Lines(), world.live());
    EXPECT_NE(nullptr, SharedPool());
    ClearSharedPool();
}

}  // namespace
