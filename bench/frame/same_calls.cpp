#include "frame/same_calls.h"

#include <cctype>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {
namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// "srv#17" becomes "srv#2" if it is the second object that is named at all.
class Renumbering {
public:
    std::string of(const std::string& text) {
        std::string out;
        for (size_t i = 0; i < text.size();) {
            out += text[i];
            if (text[i++] != '#') {
                continue;
            }
            const size_t begin = i;
            while (i < text.size() && is_digit(text[i])) {
                ++i;
            }
            out += number_of(kind_before(out) + text.substr(begin, i - begin));
        }
        return out;
    }

private:
    static std::string kind_before(const std::string& text) {
        size_t begin = text.size() - 1;
        while (begin > 0 && (std::isalpha(static_cast<unsigned char>(text[begin - 1])) != 0 ||
                             text[begin - 1] == '_')) {
            --begin;
        }
        return text.substr(begin);
    }

    std::string number_of(const std::string& name) {
        return std::to_string(numbers_.emplace(name, numbers_.size() + 1).first->second);
    }

    std::map<std::string, size_t> numbers_;
};

std::string hex(const std::vector<uint8_t>& bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : bytes) {
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 15U];
    }
    return text;
}

std::vector<std::string> calls_of(fake::World& world, const std::function<void()>& frame) {
    frame();
    world.clearCalls();
    frame();
    Renumbering renumbering;
    std::vector<std::string> lines;
    for (const fake::Call& call : world.calls()) {
        lines.push_back(renumbering.of(call.text()) + " " + hex(call.bytes));
    }
    return lines;
}

// Long lines cut: the bytes of a picture say little.
std::string joined(const std::vector<std::string>& lines) {
    constexpr size_t kShown = 160;
    std::string text;
    for (const std::string& line : lines) {
        text += "  " + line.substr(0, kShown) + "\n";
    }
    return text;
}

}  // namespace

void expect_same_calls(fake::World& world, const std::function<void()>& ours,
                       const std::function<void()>& by_hand) {
    world.setRecording(true);
    const std::vector<std::string> of_ours = calls_of(world, ours);
    const std::vector<std::string> of_hand = calls_of(world, by_hand);
    world.setRecording(false);
    if (of_ours != of_hand) {
        throw std::runtime_error("the frame by hand is not the library's:\nlibrary\n" +
                                 joined(of_ours) + "by hand\n" + joined(of_hand));
    }
}

}  // namespace bench
