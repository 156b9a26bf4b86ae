#include "run_program.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <filesystem>

#include "effect-render/files.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

std::wstring Wide(const std::string& text) {
    return std::filesystem::u8path(text).wstring();
}

std::filesystem::path OwnFolder() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return std::filesystem::path(path).parent_path();
}

// A file that the program can write to.
HANDLE OpenForProgram(const std::string& path) {
    SECURITY_ATTRIBUTES inherited = {};
    inherited.nLength = sizeof(inherited);
    inherited.bInheritHandle = TRUE;
    return CreateFileW(Wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::wstring CommandLine(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments) {
    std::wstring line = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : arguments) {
        line += L" \"" + Wide(argument) + L"\"";
    }
    return line;
}

int Execute(std::wstring line, HANDLE output, HANDLE message) {
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output;
    start.hStdError = message;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &process)) {
        return -1;
    }
    DWORD status = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

}  // namespace

ProgramResult RunProgram(const std::string& name, const std::vector<std::string>& arguments) {
    const TempFolder folder;
    const std::string output_path = folder.Path() + "/output";
    const std::string message_path = folder.Path() + "/message";
    HANDLE output = OpenForProgram(output_path);
    HANDLE message = OpenForProgram(message_path);
    ProgramResult result;
    result.status = Execute(CommandLine(OwnFolder() / name, arguments), output, message);
    CloseHandle(output);
    CloseHandle(message);
    result.output = ReadText(output_path);
    result.message = ReadText(message_path);
    return result;
}

}  // namespace effect_render
