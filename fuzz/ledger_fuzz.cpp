// Any order of calls to the ledgers of textures and programs and to the task queue, beside a plain
// model of each that the answers must agree with.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <future>
#include <iterator>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_ledger.h"
#include "DirectXEffectMgr/Source/core/task_queue.h"
#include "DirectXEffectMgr/Source/core/texture_ledger.h"
#include "budget.h"

namespace {

using fuzz::require;

template <class Type>
Type* made_up(uint64_t number) {
    return reinterpret_cast<Type*>(number * 16);
}

class TextureModel {
public:
    void step(FuzzedDataProvider& choices) {
        switch (choices.ConsumeIntegralInRange<int>(0, 5)) {
            case 0:
            case 1:
                return make(format(choices));
            case 2:
                return reuse(format(choices));
            case 3:
                return give_back(choices.ConsumeIntegralInRange<uint64_t>(1, made_ + 2));
            case 4:
                return evict();
            default:
                return take_free();
        }
    }

private:
    static constexpr size_t kBudget = 5000;

    struct Entry {
        uint64_t number;
        TextureFormat format;
    };

    static TextureFormat format(FuzzedDataProvider& choices) {
        static constexpr uint32_t kCodes[] = {32856, 33321, 34836, 5};
        return {kCodes[choices.ConsumeIntegralInRange<size_t>(0, std::size(kCodes) - 1)],
                choices.ConsumeIntegralInRange<uint32_t>(1, 8),
                choices.ConsumeIntegralInRange<uint32_t>(1, 8)};
    }
    static GpuData data(uint64_t number) {
        return {made_up<ID3D11Texture2D>(number), made_up<ID3D11ShaderResourceView>(number),
                made_up<ID3D11SamplerState>(number)};
    }
    static bool same(const TextureFormat& a, const TextureFormat& b) {
        return a.internal_format == b.internal_format && a.width == b.width && a.height == b.height;
    }
    void make(const TextureFormat& format) {
        ledger_.add(data(++made_), format);
        used_.push_back({made_, format});
        check();
    }
    void reuse(const TextureFormat& wanted) {
        const auto fits = std::find_if(free_.begin(), free_.end(), [&wanted](const Entry& entry) {
            return same(entry.format, wanted);
        });
        GpuData got{};
        require(ledger_.reuse(wanted, got) == (fits != free_.end()), "a free texture is found");
        if (fits != free_.end()) {
            require(got.texture == data(fits->number).texture, "the one released last");
            used_.push_back(*fits);
            free_.erase(fits);
        }
        check();
    }
    // One that is in use, or one that the ledger does not know.
    void give_back(uint64_t number) {
        const auto used = std::find_if(used_.begin(), used_.end(), [number](const Entry& entry) {
            return entry.number == number;
        });
        const bool is_free = std::any_of(free_.begin(), free_.end(), [number](const Entry& entry) {
            return entry.number == number;
        });
        if (is_free) {
            return;
        }
        require(ledger_.give_back(data(number)) == (used != used_.end()), "only known textures");
        if (used != used_.end()) {
            free_.push_front(*used);
            used_.erase(used);
        }
        check();
    }
    size_t free_bytes() const {
        size_t sum = 0;
        for (const Entry& entry : free_) {
            sum += size_of_format(entry.format);
        }
        return sum;
    }
    void evict() {
        GpuData gone{};
        while (ledger_.take_over_budget(gone)) {
            require(free_bytes() > kBudget && gone.texture == data(free_.back().number).texture,
                    "the one released longest ago goes");
            free_.pop_back();
        }
        require(free_bytes() <= kBudget, "the budget is kept");
        check();
    }
    void take_free() {
        GpuData gone{};
        require(ledger_.take_free(gone) == !free_.empty(), "a free texture is taken");
        if (!free_.empty()) {
            require(gone.texture == data(free_.front().number).texture, "the newest first");
            free_.pop_front();
        }
        check();
    }
    void check() const {
        require(ledger_.free_bytes() == free_bytes() && ledger_.free_size() == free_.size() &&
                    ledger_.size() == used_.size() + free_.size(),
                "the sums agree");
    }

    TextureLedger ledger_{kBudget};
    uint64_t made_ = 0;
    std::list<Entry> used_;
    std::list<Entry> free_;  // the most recently released at the front
};

class ProgramModel {
public:
    void step(FuzzedDataProvider& choices) {
        const std::string vertex = text(choices);
        const std::string fragment = text(choices);
        switch (choices.ConsumeIntegralInRange<int>(0, 3)) {
            case 0:
            case 1:
                return ask(vertex, fragment);
            case 2:
                return release(choices.ConsumeIntegralInRange<uint64_t>(1, made_ + 2));
            default:
                return take_unused();
        }
    }

private:
    static constexpr size_t kMaxUnused = 3;
    struct Entry {
        uint64_t number;
        int32_t users;
    };
    using Key = std::pair<std::string, std::string>;

    static std::string text(FuzzedDataProvider& choices) {
        return std::string(choices.ConsumeIntegralInRange<size_t>(0, 3), 'x');
    }
    static ProgramRecord record(uint64_t number) {
        return {made_up<ID3D10Blob>(number), made_up<ID3D10Blob>(number + 1),
                made_up<ID3D11VertexShader>(number), made_up<ID3D11PixelShader>(number)};
    }
    // As the pool does it: what is not known is compiled and entered.
    void ask(const std::string& vertex, const std::string& fragment) {
        ProgramRecord got{};
        const auto known = programs_.find({vertex, fragment});
        require(ledger_.acquire(vertex, fragment, got) == (known != programs_.end()),
                "known texts are found");
        if (known == programs_.end()) {
            ledger_.add(vertex, fragment, record(++made_));
            programs_[{vertex, fragment}] = {made_, 1};
        } else {
            require(got == record(known->second.number), "with their program");
            ++known->second.users;
            unused_.remove(known->first);
        }
        check();
    }
    void release(uint64_t number) {
        const auto used =
            std::find_if(programs_.begin(), programs_.end(), [number](const auto& entry) {
                return entry.second.number == number && entry.second.users > 0;
            });
        ProgramRecord gone{};
        bool evicts = false;
        if (used != programs_.end() && --used->second.users == 0) {
            unused_.push_front(used->first);
            evicts = unused_.size() > kMaxUnused;
        }
        require(ledger_.release(record(number), gone) == evicts, "too many unused ones lose one");
        if (evicts) {
            forget(unused_.back(), gone);
            unused_.pop_back();
        }
        check();
    }
    void take_unused() {
        ProgramRecord gone{};
        require(ledger_.take_unused(gone) == !unused_.empty(), "an unused program is taken");
        if (!unused_.empty()) {
            forget(unused_.front(), gone);
            unused_.pop_front();
        }
        check();
    }
    void forget(const Key& key, const ProgramRecord& gone) {
        require(gone == record(programs_.at(key).number), "the right one is forgotten");
        programs_.erase(key);
    }
    void check() const {
        require(ledger_.size() == programs_.size() && ledger_.unused_size() == unused_.size(),
                "the counts agree");
        for (const auto& [key, entry] : programs_) {
            require(ledger_.use_count(record(entry.number)) == entry.users, "and the users");
        }
    }

    ProgramLedger ledger_{kMaxUnused};
    uint64_t made_ = 0;
    std::map<Key, Entry> programs_;
    std::list<Key> unused_;  // the most recently released at the front
};

class QueueModel {
public:
    void step(FuzzedDataProvider& choices) {
        const int choice = choices.ConsumeIntegralInRange<int>(0, 40);
        if (choice == 0) {
            queue_.close();
            closed_ = true;
            break_promises();
        } else if (choice < 20) {
            enqueue();
        } else if (closed_ || !pending_.empty()) {
            run();
        }
        require(queue_.closed() == closed_, "closed once, closed for good");
    }

private:
    void enqueue() {
        const int number = made_++;
        RenderTask task([this, number] {
            ran_ = number;
            return true;
        });
        std::future<bool> future = task.get_future();
        require(queue_.enqueue(std::move(task)) == !closed_, "a closed queue takes nothing");
        if (!closed_) {
            pending_.push_back({number, std::move(future)});
        }
    }
    void run() {
        require(queue_.run_next(task_) == !closed_, "a closed queue gives nothing");
        if (!closed_) {
            require(ran_ == pending_.front().number && pending_.front().future.get(),
                    "first in, first out");
            pending_.pop_front();
        }
    }
    void break_promises() {
        for (Pending& pending : pending_) {
            bool broken = false;
            try {
                pending.future.get();
            } catch (const std::future_error&) {
                broken = true;
            }
            require(broken, "a dropped task breaks its promise");
        }
        pending_.clear();
    }

    struct Pending {
        int number;
        std::future<bool> future;
    };
    TaskQueue queue_;
    RenderTask task_;
    std::deque<Pending> pending_;
    bool closed_ = false;
    int made_ = 0;
    int ran_ = -1;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider choices(data, size);
    TextureModel textures;
    ProgramModel programs;
    QueueModel queue;
    while (choices.remaining_bytes() > 0) {
        switch (choices.ConsumeIntegralInRange<int>(0, 2)) {
            case 0:
                textures.step(choices);
                break;
            case 1:
                programs.step(choices);
                break;
            default:
                queue.step(choices);
        }
    }
    return 0;
}
