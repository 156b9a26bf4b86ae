#include "effect-render/watch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "effect-render/files.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

bool Never() {
    return false;
}

// Ends a wait that nothing else ends.
Watch::Stopped After(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    return [end] { return std::chrono::steady_clock::now() > end; };
}

constexpr std::chrono::milliseconds kLong{10000};
constexpr std::chrono::milliseconds kShort{300};

class WatchTest : public testing::Test {
protected:
    ~WatchTest() override { NoteFilesRead(false); }

    // What a drawing that reads these files leaves behind.
    FilesRead Reading(const std::vector<std::string>& paths) {
        NoteFilesRead(true);
        for (const std::string& path : paths) {
            NoteFileRead(path);
        }
        return TakeFilesRead();
    }

    TempFolder folder_;
    std::string a_ = folder_.Write("a.txt", "one");
    std::string b_ = folder_.Path() + "/b.txt";
};

TEST_F(WatchTest, NothingHappensWhileNothingChanges) {
    Watch watch;
    watch.End(Reading({a_, b_}), true);
    EXPECT_EQ(watch.Count(), 2u);
    EXPECT_FALSE(watch.Wait(After(kShort)));
}

TEST_F(WatchTest, AnotherSizeIsAChange) {
    Watch watch;
    watch.End(Reading({a_}), true);
    folder_.Write("a.txt", "three");
    EXPECT_TRUE(watch.Wait(After(kLong)));
}

TEST_F(WatchTest, AnotherTimeIsAChange) {
    Watch watch;
    watch.End(Reading({a_}), true);
    const auto path = std::filesystem::u8path(a_);
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) + std::chrono::seconds(2));
    EXPECT_TRUE(watch.Wait(After(kLong)));
}

TEST_F(WatchTest, FileThatAppearsOrGoesIsAChange) {
    Watch watch;
    watch.End(Reading({b_}), true);
    folder_.Write("b.txt", "");
    EXPECT_TRUE(watch.Wait(After(kLong)));
    watch.End(Reading({b_}), true);
    std::filesystem::remove(std::filesystem::u8path(b_));
    EXPECT_TRUE(watch.Wait(After(kLong)));
}

TEST_F(WatchTest, ChangeDuringTheDrawingCounts) {
    Watch watch;
    const FilesRead files = Reading({a_});
    folder_.Write("a.txt", "changed");
    watch.End(files, true);
    EXPECT_TRUE(watch.Wait(After(kLong)));
}

TEST_F(WatchTest, FilesOfAnEarlierDrawingCountUntilOneIsComplete) {
    Watch watch;
    watch.End(Reading({a_, folder_.Path()}), true);
    watch.Begin();
    watch.End(Reading({b_}), false);
    EXPECT_EQ(watch.Count(), 3u);
    watch.Begin();
    watch.End(Reading({b_}), true);
    EXPECT_EQ(watch.Count(), 1u);
}

TEST_F(WatchTest, WaitsForAFileThatIsReplaced) {
    Watch watch;
    watch.End(Reading({a_}), true);
    std::filesystem::remove(std::filesystem::u8path(a_));
    std::thread editor([this] {
        std::this_thread::sleep_for(kShort);
        folder_.Write("a.txt", "new");
    });
    EXPECT_TRUE(watch.Wait(Never));
    EXPECT_TRUE(IsFile(a_));
    editor.join();
}

TEST_F(WatchTest, FilesOfTheToolAndOfTheLibraryAreNoted) {
    NoteFilesRead(true);
    ReadText(a_);
    NoteLogMessage("read file:" + b_);
    NoteLogMessage("something else");
    NoteFilesRead(false);
    ReadText(a_);
    const FilesRead files = TakeFilesRead();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files.at(a_).size, 3u);
    EXPECT_FALSE(files.at(b_).there);
}

TEST_F(WatchTest, DrawsAgainForEachChangeAndGoesOnAfterAnError) {
    int drawn = 0;
    const auto draw = [&]() -> std::string {
        ReadText(a_);
        folder_.Write("a.txt", std::string(static_cast<size_t>(++drawn), '-') + "----");
        if (drawn == 2) {
            throw ToolError("broken");
        }
        return "drew";
    };
    EXPECT_EQ(DrawAndWatch(3, draw, Never), ExitStatus::Success);
    EXPECT_EQ(drawn, 3);
}

TEST_F(WatchTest, StatusIsThatOfTheLastDrawing) {
    const auto draw = []() -> std::string { throw UsageError("no"); };
    EXPECT_EQ(DrawAndWatch(1, draw, Never), ExitStatus::WrongUsage);
}

TEST_F(WatchTest, StopEndsTheWatching) {
    const auto draw = [this] { return ReadText(a_); };
    EXPECT_EQ(DrawAndWatch(0, draw, After(kShort)), ExitStatus::Success);
}

}  // namespace
}  // namespace effect_render
