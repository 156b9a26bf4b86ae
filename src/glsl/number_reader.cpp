#include "glsl/number_reader.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <system_error>

#include "glsl/char_class.h"

namespace glsl {

namespace {

constexpr char kInvalidLiteral[] = "invalid numeric literal";
constexpr char kInvalidSuffix[] = "invalid use of suffix on literal";
constexpr char kTooLarge[] = "literal needs more than 32-bits";

constexpr std::uint64_t kSaturated = std::uint64_t{1} << 40;  // beyond every 32-bit limit

std::uint32_t digitValue(char c) {
    return static_cast<std::uint32_t>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
}

bool isDigit(char c) {
    return isClass(c, kDigit);
}

// Where one literal stands while it is read.
class NumberReader {
public:
    explicit NumberReader(const char* at) : at_(at) {}

    Number read();
    const char* position() const { return at_; }

private:
    bool belongs(char c) const {
        return is_octal_ ? c >= '0' && c <= '7'
                         : isClass(c, is_hex_ ? kDigit | kHexLetter : kDigit);
    }
    void readDigits();
    bool readExponent();
    bool readSuffix();
    void convert();
    bool fail(const char* message) {
        number_.error = message;
        return false;
    }

    Number number_;
    const char* at_;
    std::uint64_t value_ = 0;  // of the digits before a `.`, saturating
    bool is_float_ = false;
    bool is_double_ = false;
    bool is_unsigned_ = false;
    bool is_octal_ = false;
    bool is_hex_ = false;
};

Number NumberReader::read() {
    if (*at_ == '0') {
        is_hex_ = (at_[1] | 0x20) == 'x';
        is_octal_ = !is_hex_;
        at_ += is_hex_ ? 2 : 0;
    }
    const char* first = at_;
    readDigits();
    if (*at_ == '.') {
        is_float_ = true;
        is_octal_ = false;
        ++at_;
        readDigits();
    }
    if ((*at_ == 'e' || *at_ == 'E') && !readExponent()) {
        return number_;
    }
    const char* last = at_;
    if (isClass(*at_, kLetter) && !readSuffix()) {
        return number_;
    }
    if (is_hex_ && (is_float_ || is_double_)) {
        fail(kInvalidLiteral);
        return number_;
    }
    number_.digits = {first, static_cast<std::size_t>(last - first)};
    convert();
    return number_;
}

// A digit that does not belong ends the run without a word: `09` is 0 and then 9.
void NumberReader::readDigits() {
    const std::uint32_t base = is_hex_ ? 16 : is_octal_ ? 8 : 10;
    for (; belongs(*at_); ++at_) {
        value_ = std::min(value_ * base + digitValue(*at_), kSaturated);
    }
}

bool NumberReader::readExponent() {
    ++at_;
    if ((*at_ == '+' || *at_ == '-') && isDigit(at_[1])) {
        ++at_;
    } else if (!isDigit(*at_)) {
        return fail(kInvalidLiteral);
    }
    readDigits();
    is_float_ = true;
    is_octal_ = false;
    return true;
}

bool NumberReader::readSuffix() {
    if (*at_ == 'f' || *at_ == 'F') {
        is_float_ = true;
        ++at_;
    } else if ((at_[0] == 'l' && at_[1] == 'f') || (at_[0] == 'L' && at_[1] == 'F')) {
        is_double_ = true;
        is_float_ = false;
        at_ += 2;
    } else if (*at_ == 'u' || *at_ == 'U') {
        if (is_float_) {
            return fail(kInvalidSuffix);
        }
        is_unsigned_ = true;
        ++at_;
    } else {
        return fail(kInvalidLiteral);
    }
    return true;
}

void NumberReader::convert() {
    if (is_float_) {
        number_.kind = NumberKind::floating;
        number_.floatValue = toFloat(number_.digits);
    } else if (is_double_) {
        number_.kind = NumberKind::doubleFloating;
        number_.doubleValue = toDouble(number_.digits);
    } else {
        number_.kind = is_unsigned_ ? NumberKind::unsignedInteger : NumberKind::signedInteger;
        const std::uint64_t limit = is_unsigned_ ? 0xFFFFFFFFu : 0x7FFFFFFFu;
        if (value_ > limit) {
            fail(kTooLarge);
            return;
        }
        number_.integer = static_cast<std::uint32_t>(value_);
    }
}

// Of a value that no finite number other than 0 stands for: true if it is too large, false if it
// is too small.
bool isHuge(std::string_view digits) {
    const std::size_t exponent_at = std::min(digits.find_first_of("eE"), digits.size());
    const std::string_view mantissa = digits.substr(0, exponent_at);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t leading = mantissa.find_first_of("123456789");
    if (leading == std::string_view::npos) {
        return false;
    }
    std::int64_t exponent = 0;
    std::size_t i = exponent_at + 1;
    const bool negative = i < digits.size() && digits[i] == '-';
    i += i < digits.size() && !isDigit(digits[i]) ? 1 : 0;
    for (; i < digits.size(); ++i) {
        exponent = std::min<std::int64_t>(exponent * 10 + (digits[i] - '0'), std::int64_t{1} << 40);
    }
    const auto magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(leading);
    return magnitude + (negative ? -exponent : exponent) > 0;
}

// Powers of ten that a float holds exactly.
constexpr float kFloatPowers[] = {1e0f, 1e1f, 1e2f, 1e3f, 1e4f, 1e5f,
                                  1e6f, 1e7f, 1e8f, 1e9f, 1e10f};

// The common short literals: digits and a point, with a value that is one exact division. False if
// the text is not of that kind.
bool toFloatQuickly(std::string_view digits, float& value) {
    std::uint32_t mantissa = 0;
    std::size_t point = digits.size();
    if (digits.size() > 8) {
        return false;
    }
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (digits[i] == '.') {
            point = i;
        } else if (isDigit(digits[i])) {
            mantissa = mantissa * 10 + digitValue(digits[i]);
        } else {
            return false;
        }
    }
    if (mantissa > (std::uint32_t{1} << 24)) {
        return false;
    }
    const std::size_t decimals = point == digits.size() ? 0 : digits.size() - point - 1;
    value = static_cast<float>(mantissa) / kFloatPowers[decimals];
    return true;
}

template <class T>
T convertDigits(std::string_view digits) {
    T value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return isHuge(digits) ? std::numeric_limits<T>::infinity() : T{0};
    }
    return value;
}

}  // namespace

Number readNumber(const char*& at) {
    NumberReader reader(at);
    const Number number = reader.read();
    at = reader.position();
    return number;
}

float toFloat(std::string_view digits) {
    float value = 0.0f;
    return toFloatQuickly(digits, value) ? value : convertDigits<float>(digits);
}

double toDouble(std::string_view digits) {
    return convertDigits<double>(digits);
}

}  // namespace glsl
