#include "DirectXEffectMgr/Source/core/program_ledger.h"

#include <algorithm>
#include <functional>

bool ProgramLedger::ShaderLess::operator()(const ProgramRecord& a, const ProgramRecord& b) const {
    if (a.pixel_shader != b.pixel_shader) {
        return std::less<>()(a.pixel_shader, b.pixel_shader);
    }
    return std::less<>()(a.vertex_shader, b.vertex_shader);
}

bool ProgramLedger::acquire(std::string_view vertex_text, std::string_view fragment_text,
                            ProgramRecord& out) {
    const auto found = programs_.find(KeyView(vertex_text, fragment_text));
    if (found == programs_.end()) {
        return false;
    }
    const ProgramRecord program = found->second;
    const auto counted = use_counts_.try_emplace(program, 0).first;
    if (counted->second == 0) {
        const auto idle = std::find(unused_.begin(), unused_.end(), program);
        if (idle != unused_.end()) {
            nodes_.splice(nodes_.begin(), unused_, idle);
        }
    }
    ++counted->second;
    out = program;
    return true;
}

void ProgramLedger::add(const std::string& vertex_text, const std::string& fragment_text,
                        const ProgramRecord& program) {
    std::list<ProgramRecord> node(1);
    const auto counted = use_counts_.try_emplace(program, 0).first;
    try {
        programs_.insert_or_assign(Key(vertex_text, fragment_text), program);
    } catch (...) {
        use_counts_.erase(counted);  // an exhausted heap leaves no half entry behind
        throw;
    }
    counted->second = 1;
    nodes_.splice(nodes_.begin(), node);
}

bool ProgramLedger::release(const ProgramRecord& program, ProgramRecord& evicted) noexcept {
    const auto counted = use_counts_.find(program);
    if (counted == use_counts_.end()) {
        return false;
    }
    if (counted->second > 1) {
        --counted->second;
        return false;
    }
    nodes_.front() = counted->first;
    unused_.splice(unused_.begin(), nodes_, nodes_.begin());
    use_counts_.erase(counted);
    if (unused_.size() <= max_unused_) {
        return false;
    }
    evicted = unused_.back();
    unused_.pop_back();
    forget(evicted);
    return true;
}

bool ProgramLedger::take_unused(ProgramRecord& out) {
    if (unused_.empty()) {
        return false;
    }
    out = unused_.front();
    unused_.pop_front();
    forget(out);
    return true;
}

int32_t ProgramLedger::use_count(const ProgramRecord& program) const {
    const auto counted = use_counts_.find(program);
    return counted == use_counts_.end() ? 0 : counted->second;
}

void ProgramLedger::forget(const ProgramRecord& program) {
    const auto found =
        std::find_if(programs_.begin(), programs_.end(),
                     [&program](const auto& entry) { return entry.second == program; });
    if (found != programs_.end()) {
        programs_.erase(found);
    }
}
