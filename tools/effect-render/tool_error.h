#pragma once

#include <stdexcept>
#include <string>

namespace effect_render {

/// Exit statuses of the program.
enum class ExitStatus : int {
    Success = 0,
    Failure = 1,     // the effect, or a file that it needs, failed
    WrongUsage = 2,  // the command line makes no sense
};

/// What ends the program early. The text is meant for the user and names the file, the field or
/// the option at fault.
class ToolError : public std::runtime_error {
public:
    explicit ToolError(const std::string& text, ExitStatus status = ExitStatus::Failure)
        : std::runtime_error(text), status_(status) {}

    ExitStatus Status() const { return status_; }

private:
    ExitStatus status_;
};

/// The same for a mistake on the command line.
class UsageError : public ToolError {
public:
    explicit UsageError(const std::string& text) : ToolError(text, ExitStatus::WrongUsage) {}
};

}  // namespace effect_render
