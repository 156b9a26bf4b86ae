#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "DirectXEffectMgr/Source/core/program_record.h"

/// Bookkeeping of compiled programs: which texts gave which program, how many users each has, and
/// which unused ones are kept for a later request.
///
/// Knows no device: a program is four pointers that are compared and never followed. A program is
/// at any time either in use (counted) or on the list of unused ones, and in both cases known by
/// its two texts. Identical texts mean the same program, and any difference means another one.
/// Not synchronised: the pool's mutex guards it.
class ProgramLedger {
public:
    /// @param max_unused  the most programs that are kept while nobody uses them
    explicit ProgramLedger(size_t max_unused) : max_unused_(max_unused) {}

    /// Finds the program of two texts and counts one more user; an unused program comes back to
    /// life and leaves the list of unused ones.
    ///
    /// @returns false, with `out` untouched, if no program is known for these texts
    [[nodiscard]] bool acquire(std::string_view vertex_text, std::string_view fragment_text,
                               ProgramRecord& out);

    /// Enters a program that was compiled just now, with one user.
    void add(const std::string& vertex_text, const std::string& fragment_text,
             const ProgramRecord& program);

    /// Gives one use back. The last one moves the program to the front of the unused list, and
    /// if the list is then too long, the program released longest ago is forgotten.
    ///
    /// @param evicted  receives the forgotten program, which the caller has to release
    /// @returns true if `evicted` was filled; a program that isn't in use changes nothing
    [[nodiscard]] bool release(const ProgramRecord& program, ProgramRecord& evicted) noexcept;

    /// Forgets one unused program, the most recently released first.
    ///
    /// @returns false if there is none
    [[nodiscard]] bool take_unused(ProgramRecord& out);

    /// Number of users; 0 for a program that is unused or unknown.
    [[nodiscard]] int32_t use_count(const ProgramRecord& program) const;
    /// Programs known by their texts, in use or not.
    [[nodiscard]] size_t size() const { return programs_.size(); }
    /// Programs kept with no user.
    [[nodiscard]] size_t unused_size() const { return unused_.size(); }

private:
    using Key = std::pair<std::string, std::string>;  // vertex text, fragment text
    using KeyView = std::pair<std::string_view, std::string_view>;

    // Byte order of the vertex text, then of the fragment text; asked with views, so that a
    // request for a known program copies no text.
    struct KeyLess {
        using is_transparent = void;
        static KeyView view(const Key& key) { return {key.first, key.second}; }
        static KeyView view(const KeyView& key) { return key; }
        template <typename A, typename B>
        bool operator()(const A& a, const B& b) const {
            return view(a) < view(b);
        }
    };
    // Order by pixel shader, then by vertex shader; the blobs take no part.
    struct ShaderLess {
        bool operator()(const ProgramRecord& a, const ProgramRecord& b) const;
    };

    void forget(const ProgramRecord& program);

    size_t max_unused_;
    std::map<Key, ProgramRecord, KeyLess> programs_;
    std::map<ProgramRecord, int32_t, ShaderLess> use_counts_;
    std::list<ProgramRecord> unused_;  // the most recently released at the front
    std::list<ProgramRecord> nodes_;   // one for each program in use, so that release() needs none
};
