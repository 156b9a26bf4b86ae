#pragma once

/// The table that is printed and written as JSON.

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// A cell is a text or a number with its digits behind the point.
struct Cell {
    Cell(std::string words) : text(std::move(words)) {}
    Cell(const char* words) : text(words) {}
    Cell(double value, int digits);

    std::string text;
    double number = 0.0;
    bool is_number = false;
};

/// How a measured value stands to its limit.
enum class Outcome { kMet, kMissed, kStated };

/// A row of the summary, which holds what the sections found beside the limits.
struct Finding {
    std::string what;
    std::string against;
    std::string measured;
    std::string limit;  // empty: the value is only stated
    Outcome outcome = Outcome::kStated;
};

/// A text made as by printf; cut behind 255 characters.
#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string
format(const char* pattern, ...);

/// Met or missed.
inline Outcome outcome_of(bool met) {
    return met ? Outcome::kMet : Outcome::kMissed;
}

struct Section {
    std::string title;
    std::vector<std::string> columns;
    std::vector<std::vector<Cell>> rows;
    std::vector<std::string> notes;  // a line each below the table
    std::vector<Finding> findings;
};

class Report {
public:
    explicit Report(int rounds) : rounds_(rounds) {}

    /// Prints the section at once and keeps it.
    void add(Section section);

    /// "rounds", "summary" with the findings of all sections in their order, and "sections": names
    /// as keys, each with its rows as objects by column and its notes.
    nlohmann::ordered_json to_json() const;

private:
    int rounds_;
    std::vector<Section> sections_;
};

}  // namespace bench
