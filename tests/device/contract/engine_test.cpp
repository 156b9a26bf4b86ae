#include <gtest/gtest.h>

#include <thread>

#include "host/fake_host.h"

namespace {

using host::FakeHost;
using host::FakeHostBothModes;
using host::Library;
using host::Lines;
using host::Mode;

constexpr int32_t kPointer = static_cast<int32_t>(0x80004003);

class EngineExportsTest : public FakeHost {};

TEST_F(EngineExportsTest, NullOutPointerIsRefusedAndMakesNoEngine) {
    EXPECT_EQ(kPointer, Library::get().create(nullptr, host::log::receive, true, world.device()));
    EXPECT_EQ(Lines(), world.texts());
}

TEST_F(EngineExportsTest, OneEnginePerMode) {
    IOpenGLEffectEngine* threaded = start(Mode::threaded);
    IOpenGLEffectEngine* inlined = start(Mode::inlined);
    EXPECT_NE(threaded, inlined);
    EXPECT_TRUE(threaded->IsAutoCreateGLContext());
    EXPECT_FALSE(inlined->IsAutoCreateGLContext());
}

TEST_P(FakeHostBothModes, ASecondCreateGivesTheSameEngineAndIgnoresItsArguments) {
    fake::World& other = host::newWorld();
    IOpenGLEffectEngine* again = nullptr;
    EXPECT_EQ(0,
              Library::get().create(&again, nullptr, GetParam() == Mode::threaded, other.device()));
    EXPECT_EQ(engine, again);
    EXPECT_EQ(world.device(), again->GetDevicePair()->device);
    EXPECT_EQ(Lines(), other.texts());
    const host::Effect effect = makeEffectOf(host::kBadGlsl);
    EXPECT_NE(0, init(effect));
    EXPECT_FALSE(host::log::errors().empty()) << "the first log function still receives";
}

TEST_P(FakeHostBothModes, ReportsTheAdapterOfTheGivenDevice) {
    // 3000 MB and some bytes, 17 MB, 8000 MB and a byte; the name has a letter outside ASCII.
    const Lines expected = {
        "Device Information : ",
        "  Description: Fake Adapt\xC3\xA9r",
        "  Vendor ID: 4318",
        "  Device ID: 7",
        "  Dedicated Video Memory: 3000 MB",
        "  Dedicated System Memory: 17 MB",
        "  Shared System Memory: 8000 MB",
    };
    EXPECT_EQ(expected, host::log::texts(2));
    EXPECT_EQ((Lines{"device.GetImmediateContext() -> immediate",
                     "device.QueryInterface(IDXGIDevice) -> dxgi_device#1",
                     "dxgi_device#1.GetAdapter() -> adapter#1", "adapter#1.GetDesc()"}),
              world.texts());
    EXPECT_EQ(Lines(), world.live()) << "the report keeps nothing";
}

TEST_P(FakeHostBothModes, KeepsOneReferenceOnTheGivenDeviceForGood) {
    EXPECT_EQ(2, world.references(world.device()));
    EXPECT_EQ(2, world.references(world.immediate()));
    stop();
    EXPECT_EQ(2, world.references(world.device()));
}

struct ReportFault {
    const char* method;
    Lines calls;
};

class AdapterReportFaultTest : public FakeHost, public testing::WithParamInterface<ReportFault> {};

TEST_P(AdapterReportFaultTest, LogsNothingReleasesAllAndTheEngineWorks) {
    world.failNth(GetParam().method, 1);
    ASSERT_NE(nullptr, start(Mode::threaded));
    EXPECT_EQ(Lines(), host::log::texts(2));
    EXPECT_EQ(GetParam().calls, takeCalls());
    EXPECT_EQ(Lines(), world.live());
    world.clearFaults();
    const host::Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, AdapterReportFaultTest,
    testing::Values(ReportFault{"QueryInterface",
                                {"device.QueryInterface(IDXGIDevice) -> 0x80004005"}},
                    ReportFault{"GetAdapter",
                                {"device.QueryInterface(IDXGIDevice) -> dxgi_device#1",
                                 "dxgi_device#1.GetAdapter() -> 0x80004005"}},
                    ReportFault{"GetDesc",
                                {"device.QueryInterface(IDXGIDevice) -> dxgi_device#1",
                                 "dxgi_device#1.GetAdapter() -> adapter#1",
                                 "adapter#1.GetDesc() -> 0x80004005"}}),
    [](const auto& fault) { return std::string(fault.param.method); });

TEST_F(EngineExportsTest, DestroyIgnoresNullAndStrangers) {
    IOpenGLEffectEngine* live = start(Mode::inlined);
    int stranger = 0;
    EXPECT_EQ(0, Library::get().destroy(nullptr));
    EXPECT_EQ(0, Library::get().destroy(reinterpret_cast<IOpenGLEffectEngine*>(&stranger)));
    IOpenGLEffectEngine* again = nullptr;
    EXPECT_EQ(0, Library::get().create(&again, nullptr, false, nullptr));
    EXPECT_EQ(live, again);
}

TEST_F(EngineExportsTest, DestroyOfOneModeLeavesTheOtherRunning) {
    IOpenGLEffectEngine* threaded = start(Mode::threaded);
    start(Mode::inlined);
    EXPECT_EQ(0, Library::get().destroy(engine));
    EXPECT_TRUE(threaded->PostTask([] { return true; }, false).get());
    engine = threaded;
    const host::Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
}

TEST_F(EngineExportsTest, ANewEngineTakesANewLogFunctionAndDevice) {
    start(Mode::inlined);
    stop();
    fake::World& other = host::newWorld();
    IOpenGLEffectEngine* made = nullptr;
    host::log::clear();
    ASSERT_EQ(0, Library::get().create(&made, nullptr, false, other.device()));
    EXPECT_EQ(other.device(), made->GetDevicePair()->device);
    EXPECT_TRUE(host::log::lines().empty()) << "a null log function silences the library";
    Library::get().destroy(made);
}

TEST_F(EngineExportsTest, AnEngineOfTheOtherModeReplacesTheLogFunction) {
    IOpenGLEffectEngine* silent = nullptr;
    ASSERT_EQ(0, Library::get().create(&silent, nullptr, true, world.device()));
    EXPECT_TRUE(host::log::lines().empty());
    start(Mode::inlined);
    host::log::clear();
    EXPECT_FALSE(silent->PostTask([] { return false; }, false).get());
    engine = silent;
    const host::Effect effect = makeEffectOf(host::kBadGlsl);
    EXPECT_NE(0, init(effect));
    EXPECT_FALSE(host::log::errors().empty());
    Library::get().destroy(silent);
}

TEST_F(EngineExportsTest, SetIsAutoCreateGLContextIsTheEnginesOwnSlot) {
    start(Mode::inlined);
    Library::get().setAutoCreate(engine, true);
    EXPECT_TRUE(engine->IsAutoCreateGLContext());
    Library::get().setAutoCreate(engine, false);
    EXPECT_FALSE(engine->IsAutoCreateGLContext());
    Library::get().setAutoCreate(nullptr, true);
}

TEST_F(EngineExportsTest, CreateRunsOnAnyThread) {
    std::thread([this] { start(Mode::threaded); }).join();
    ASSERT_NE(nullptr, engine);
    EXPECT_EQ(0, draw(readyEffect()));
}

TEST_F(EngineExportsTest, TwoHundredEnginesInARowLeaveNothing) {
    for (int i = 0; i < 200; ++i) {
        const Mode mode = i % 2 == 0 ? Mode::inlined : Mode::threaded;
        ASSERT_NE(nullptr, start(mode)) << i;
        stop();
    }
    EXPECT_EQ(Lines(), world.live());
    // The one that the world holds, and one per engine: an engine never gives its reference back.
    EXPECT_EQ(201, world.references(world.device()));
}

TEST_F(EngineExportsTest, CreatesOnManyThreadsGiveOneEngine) {
    std::vector<std::thread> threads;
    std::vector<IOpenGLEffectEngine*> got(8, nullptr);
    for (size_t i = 0; i < got.size(); ++i) {
        threads.emplace_back([&got, i, this] {
            Library::get().create(&got[i], host::log::receive, true, world.device());
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (IOpenGLEffectEngine* one : got) {
        EXPECT_EQ(got[0], one);
    }
    Library::get().destroy(got[0]);
}

INSTANTIATE_TEST_SUITE_P(Modes, FakeHostBothModes, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
