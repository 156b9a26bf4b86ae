#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace glsl {

/// The lexer's editable copy of a source. At least kPadding zero bytes stand behind the text, so
/// that code may look a few bytes past the end without asking.
class SourceText {
public:
    static constexpr std::size_t kPadding = 32;
    /// Longer sources are refused: positions are kept in 32 bits, signed ones included.
    static constexpr std::size_t kLongest = std::size_t{1} << 30;

    /// Takes `length` bytes, with room for `slack` more. Throws std::bad_alloc.
    void assign(const char* bytes, std::size_t length, std::size_t slack);

    const char* data() const { return bytes_.get(); }
    char* data() { return bytes_.get(); }
    const char* end() const { return bytes_.get() + length_; }
    std::size_t length() const { return length_; }
    std::string_view view() const { return {bytes_.get(), length_}; }

    /// The text from `from` on becomes `tail`, which does not lie in this text.
    void replaceTail(std::size_t from, std::string_view tail);
    /// The text becomes `length` bytes long: shorter, or longer by bytes to be written.
    void resize(std::size_t length);
    std::size_t capacity() const { return capacity_; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t length_ = 0;
    std::size_t capacity_ = 0;  // without the padding
};

}  // namespace glsl
