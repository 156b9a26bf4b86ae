#include "report.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace bench {
namespace {

std::vector<size_t> column_widths(const Section& section) {
    std::vector<size_t> widths;
    for (const std::string& column : section.columns) {
        widths.push_back(column.size());
    }
    for (const std::vector<Cell>& row : section.rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].text.size());
        }
    }
    return widths;
}

// Numbers stand to the right, the first column to the left.
void print_cell(const std::string& text, size_t width, bool left) {
    const int signed_width = static_cast<int>(width);
    std::printf("%*s  ", left ? -signed_width : signed_width, text.c_str());
}

void print(const Section& section) {
    std::printf("\n%s\n", section.title.c_str());
    const std::vector<size_t> widths = column_widths(section);
    for (size_t i = 0; i < widths.size(); ++i) {
        print_cell(section.columns[i], widths[i], i == 0);
    }
    std::printf("\n");
    for (const std::vector<Cell>& row : section.rows) {
        for (size_t i = 0; i < row.size(); ++i) {
            print_cell(row[i].text, widths[i], i == 0);
        }
        std::printf("\n");
    }
    for (const std::string& note : section.notes) {
        std::printf("%s\n", note.c_str());
    }
    std::fflush(stdout);
}

nlohmann::ordered_json to_json(const Section& section) {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const std::vector<Cell>& row : section.rows) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (size_t i = 0; i < row.size(); ++i) {
            if (row[i].is_number) {
                object[section.columns[i]] = row[i].number;
            } else {
                object[section.columns[i]] = row[i].text;
            }
        }
        rows.push_back(std::move(object));
    }
    return {{"rows", std::move(rows)}, {"notes", section.notes}};
}

}  // namespace

Cell::Cell(double value, int digits) : number(value), is_number(true) {
    std::array<char, 64> buffer = {};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", digits, value);
    text = buffer.data();
}

void Report::add(Section section) {
    print(section);
    sections_.push_back(std::move(section));
}

nlohmann::ordered_json Report::to_json() const {
    nlohmann::ordered_json json = {{"rounds", rounds_}};
    for (const Section& section : sections_) {
        json[section.title] = bench::to_json(section);
    }
    return json;
}

}  // namespace bench
