#include "DirectXEffectMgr/Source/core/numbered_lines.h"

#include <cstdint>
#include <string>

#include "DirectXEffectMgr/Source/logging/logging.h"

void log_numbered_lines(std::string_view text) {
    std::string line;  // with the zero at its end that the format needs
    int32_t number = 0;
    while (!text.empty()) {
        const size_t newline = text.find('\n');
        line.assign(text.substr(0, newline));
        log_info("%4d:%s", ++number, line.c_str());
        text.remove_prefix(newline == std::string_view::npos ? text.size() : newline + 1);
    }
}
