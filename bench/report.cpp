#include "report.h"

#include <algorithm>
#include <array>
#include <cstdarg>
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

// As the summary shows it.
const char* outcome_word(Outcome outcome) {
    switch (outcome) {
        case Outcome::kMet:
            return "met";
        case Outcome::kMissed:
            return "missed";
        case Outcome::kStated:
            break;
    }
    return "stated";
}

nlohmann::ordered_json to_json(const Finding& finding) {
    return {{"what", finding.what},
            {"against", finding.against},
            {"measured", finding.measured},
            {"limit", finding.limit},
            {"outcome", outcome_word(finding.outcome)}};
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

std::string format(const char* pattern, ...) {
    std::array<char, 256> buffer = {};
    std::va_list arguments;
    va_start(arguments, pattern);
    std::vsnprintf(buffer.data(), buffer.size(), pattern, arguments);
    va_end(arguments);
    return buffer.data();
}

Cell::Cell(double value, int digits)
    : text(format("%.*f", digits, value)), number(value), is_number(true) {}

void Report::add(Section section) {
    print(section);
    sections_.push_back(std::move(section));
}

nlohmann::ordered_json Report::to_json() const {
    nlohmann::ordered_json summary = nlohmann::ordered_json::array();
    nlohmann::ordered_json sections = nlohmann::ordered_json::object();
    for (const Section& section : sections_) {
        for (const Finding& finding : section.findings) {
            summary.push_back(bench::to_json(finding));
        }
        sections[section.title] = bench::to_json(section);
    }
    return {{"rounds", rounds_}, {"summary", summary}, {"sections", sections}};
}

}  // namespace bench
