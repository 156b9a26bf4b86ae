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

struct Section {
    std::string title;
    std::vector<std::string> columns;
    std::vector<std::vector<Cell>> rows;
    std::vector<std::string> notes;  // a line each below the table
};

class Report {
public:
    explicit Report(int rounds) : rounds_(rounds) {}

    /// Prints the section at once and keeps it.
    void add(Section section);

    /// Names of sections as keys, each with its rows as objects by column and its notes.
    nlohmann::ordered_json to_json() const;

private:
    int rounds_;
    std::vector<Section> sections_;
};

}  // namespace bench
