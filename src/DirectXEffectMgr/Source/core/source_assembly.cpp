#include "DirectXEffectMgr/Source/core/source_assembly.h"

namespace {

constexpr std::string_view kPrefixCall = "PREFIX(";
constexpr std::string_view kDrawInstanceCall = "PREFIX_DRAW_INSTANCE(";

// The position of the parenthesis that closes the one before `at`; the text's length if none does.
size_t closing_parenthesis(std::string_view text, size_t at) {
    int64_t depth = 1;
    for (; at < text.size(); ++at) {
        if (text[at] == '(') {
            ++depth;
        } else if (text[at] == ')' && --depth == 0) {
            break;
        }
    }
    return at;
}

// These parameters are the library's own: every effect has them under their plain names.
bool keeps_plain_name(std::string_view name) {
    return name == "iResolution" || name == "iResolutionOrig";
}

// One pass over a text that replaces the calls of one word.
class CallExpander {
public:
    CallExpander(std::string_view text, const OriginMap* from, OriginMap* to)
        : text_(text), from_(from), to_(from == nullptr ? nullptr : to) {
        out_.reserve(text.size());
    }

    std::string expand(std::string_view call, std::string_view prefix, bool keep_plain_names) {
        size_t copied = 0;
        size_t found = text_.find(call);
        while (found != std::string_view::npos) {
            copy(copied, found);
            const size_t begin = found + call.size();
            const size_t end = closing_parenthesis(text_, begin);
            if (!keep_plain_names || !keeps_plain_name(text_.substr(begin, end - begin))) {
                put(prefix, found);
                put("_", found);
            }
            copy(begin, end);
            copied = end < text_.size() ? end + 1 : end;
            found = text_.find(call, copied);
        }
        copy(copied, text_.size());
        return std::move(out_);
    }

private:
    void copy(size_t begin, size_t end) {
        out_.append(text_, begin, end - begin);
        if (to_ != nullptr) {
            to_->append_slice(*from_, begin, end);
        }
    }

    void put(std::string_view piece, size_t stands_for) {
        out_.append(piece);
        if (to_ != nullptr) {
            to_->append_replacement(from_->find(stands_for).value_or(SourcePosition{}),
                                    piece.size());
        }
    }

    std::string_view text_;
    const OriginMap* from_;
    OriginMap* to_;
    std::string out_;
};

}  // namespace

std::string ExpandPrefix(std::string_view text, std::string_view prefix, const OriginMap* from,
                         OriginMap* to) {
    return CallExpander(text, from, to).expand(kPrefixCall, prefix, true);
}

std::string ExpandDrawInstance(std::string_view text, std::string_view prefix,
                               const OriginMap* from, OriginMap* to) {
    return CallExpander(text, from, to).expand(kDrawInstanceCall, prefix, false);
}
