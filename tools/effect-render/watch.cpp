#include "watch.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <thread>
#include <utility>

#include "console.h"

namespace effect_render {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLookAgain{100};
constexpr milliseconds kSettle{50};
constexpr int kSettleLooks = 20;  // a file may be missing, or grow, for a second

FilesRead Look(const FilesRead& files) {
    FilesRead now;
    for (const auto& [path, unused] : files) {
        now.emplace_hint(now.end(), path, StateOf(path));
    }
    return now;
}

// Nothing is gone that was there.
bool IsWhole(const FilesRead& before, const FilesRead& now) {
    return std::all_of(before.begin(), before.end(), [&now](const auto& file) {
        return !file.second.there || now.at(file.first).there;
    });
}

void Settle(const FilesRead& files) {
    FilesRead last = Look(files);
    for (int i = 0; i < kSettleLooks; ++i) {
        std::this_thread::sleep_for(kSettle);
        FilesRead now = Look(files);
        if (now == last && IsWhole(files, now)) {
            return;
        }
        last = std::move(now);
    }
}

std::string InMilliseconds(std::chrono::steady_clock::time_point start) {
    const auto taken = std::chrono::steady_clock::now() - start;
    return std::to_string(std::chrono::duration_cast<milliseconds>(taken).count()) + " ms";
}

std::string Files(size_t count) {
    return std::to_string(count) + (count == 1 ? " file" : " files");
}

ExitStatus DrawTelling(const std::function<std::string()>& draw) {
    const auto start = std::chrono::steady_clock::now();
    try {
        const std::string told = draw();
        PrintLine("effect-render: " + told + " in " + InMilliseconds(start));
        return ExitStatus::Success;
    } catch (const std::exception& error) {
        return PrintError(error);
    }
}

}  // namespace

void Watch::Begin() {
    files_ = Look(files_);
}

void Watch::End(FilesRead files, bool complete) {
    if (!complete) {
        files.insert(files_.begin(), files_.end());
    }
    files_ = std::move(files);
}

bool Watch::IsChanged() const {
    return std::any_of(files_.begin(), files_.end(),
                       [](const auto& file) { return StateOf(file.first) != file.second; });
}

bool Watch::Wait(const Stopped& stopped) const {
    while (!IsChanged()) {
        if (stopped()) {
            return false;
        }
        std::this_thread::sleep_for(kLookAgain);
    }
    Settle(files_);
    return !stopped();
}

ExitStatus DrawAndWatch(int32_t count, const std::function<std::string()>& draw,
                        const Watch::Stopped& stopped) {
    Watch watch;
    NoteFilesRead(true);
    for (int32_t drawn = 1;; ++drawn) {
        watch.Begin();
        const ExitStatus status = DrawTelling(draw);
        watch.End(TakeFilesRead(), status == ExitStatus::Success);
        if (drawn == count) {
            NoteFilesRead(false);
            return status;
        }
        PrintLine("effect-render: watching " + Files(watch.Count()));
        if (!watch.Wait(stopped)) {
            NoteFilesRead(false);
            return ExitStatus::Success;
        }
        drawn = count == 0 ? 0 : drawn;  // does not run over
    }
}

}  // namespace effect_render
