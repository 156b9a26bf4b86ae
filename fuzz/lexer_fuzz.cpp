// Any text through the lexer, rewriting included. Looking ahead and going back, as the parser does
// it, gives the tokens that reading straight on gives.

#include <fuzzer/FuzzedDataProvider.h>

#include <string>
#include <vector>

#include "budget.h"
#include "token_text.h"

namespace {

using glsl::test::describe;
using glsl::test::Reader;

// What reading gives until the end, an error, or the count.
struct Tokens {
    std::vector<std::string> texts;
    bool ended = false;
};

void read_some(Reader& reader, size_t count, Tokens& into) {
    for (size_t i = 0; i < count && !into.ended; ++i) {
        const glsl::token& next = reader->read();
        into.ended = reader->error() != nullptr || next.type == glsl::TokenKind::end;
        if (reader->error() == nullptr) {
            into.texts.push_back(describe(next));
        }
    }
}

// Reads all, now and then ahead. An error that came up ahead ends it early.
Tokens read_with_looks_ahead(const std::string& source, FuzzedDataProvider& choices) {
    Reader reader(source);
    Tokens all;
    while (!all.ended) {
        const int choice = choices.ConsumeIntegralInRange<int>(0, 3);
        if (choice == 1) {
            const std::string peeked = describe(reader->peek());
            if (reader->error() != nullptr) {
                return all;
            }
            Tokens next;
            read_some(reader, 1, next);
            fuzz::require(next.texts.size() == 1 && next.texts[0] == peeked,
                          "peek tells what comes");
            all.texts.push_back(peeked);
            all.ended = next.ended;
        } else if (choice == 2) {
            const size_t count = choices.ConsumeIntegralInRange<size_t>(1, 40);
            Tokens first;
            reader->save();
            read_some(reader, count, first);
            if (reader->error() != nullptr) {
                return all;
            }
            reader->restore();
            Tokens again;
            read_some(reader, first.texts.size(), again);
            fuzz::require(again.texts == first.texts, "a place gives the same tokens again");
            all.texts.insert(all.texts.end(), again.texts.begin(), again.texts.end());
            all.ended = again.ended;
        } else {
            read_some(reader, 1, all);
        }
    }
    return all;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider choices(data, size);
    const std::string source(reinterpret_cast<const char*>(data), size);
    Tokens plain;
    {
        const fuzz::Budget budget(size);
        Reader reader(source);
        while (!plain.ended) {
            read_some(reader, 1, plain);
        }
    }
    const Tokens ahead = read_with_looks_ahead(source, choices);
    fuzz::require(ahead.texts.size() <= plain.texts.size() &&
                      std::equal(ahead.texts.begin(), ahead.texts.end(), plain.texts.begin()),
                  "looks ahead change no token");
    return 0;
}
