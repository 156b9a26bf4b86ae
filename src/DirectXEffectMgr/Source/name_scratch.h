#pragma once

#include <atomic>
#include <cstring>
#include <string>

/// A string that an effect keeps for the names of its setters: its memory stays from call to call.
struct NameScratch {
    std::string text;                          // guarded by `busy`
    std::atomic_flag busy = ATOMIC_FLAG_INIT;  // set while a TableName uses `text`
};

/// A host's name as the `std::string` that the parameter tables are asked with.
///
/// Allocates nothing in a steady frame: a short name fits into the object, a long one goes to the
/// effect's scratch. A second thread that comes at the same moment gets a string of its own.
class TableName {
public:
    TableName(NameScratch& scratch, const char* name) {
        const size_t length = std::strlen(name);
        if (length > own_.capacity() && !scratch.busy.test_and_set(std::memory_order_acquire)) {
            scratch_ = &scratch;
        }
        std::string& text = scratch_ != nullptr ? scratch_->text : own_;
        try {
            text.assign(name, length);
        } catch (...) {
            release();
            throw;
        }
    }
    TableName(const TableName&) = delete;
    TableName& operator=(const TableName&) = delete;
    ~TableName() { release(); }

    operator const std::string&() const { return scratch_ != nullptr ? scratch_->text : own_; }

private:
    void release() {
        if (scratch_ != nullptr) {
            scratch_->busy.clear(std::memory_order_release);
        }
    }

    std::string own_;
    NameScratch* scratch_ = nullptr;
};
