#pragma once

/// Reading shader sources: plain text or base64 text, from disk or from wherever a caller keeps it.

#include <string>
#include <string_view>

/// Where files come from. Tests and fuzzers put a tree in memory in the disk's place.
class FileSource {
public:
    virtual ~FileSource() = default;
    /// Replaces `bytes` by the whole file, untranslated.
    /// @param path  UTF-8, as the host or the `#include` gave it
    /// @returns false if there is no such file or it cannot be read; `bytes` is then empty
    virtual bool read(const std::string& path, std::string& bytes) = 0;
};

/// The files of the disk. Stateless; any thread may use it.
FileSource& disk_files();

/// Bytes that a shader file may have; a longer one counts as unreadable.
constexpr size_t kMaxShaderFileBytes = size_t{256} << 20;

/// How a read ended. Everything but kRead was logged and gave no text. kTooMuch is for whoever
/// asked for the file and has enough of it; no read ends so.
enum class ReadStatus { kRead, kEmptyPath, kUnreadable, kBadBase64, kTooMuch };

/// The text of a shader file, as Windows reads text files on every platform: each "\r\n" becomes
/// "\n", and a byte 26 ends the file. All other bytes, zero and a byte-order mark included, stay.
/// Paths may climb out of any folder. Logs each read ("read file:%s") and each failure.
///
/// @param path    UTF-8
/// @param base64  the file holds base64 text; what it decodes to is not translated again
/// @param status  if not null, receives how it ended
/// @returns the text; empty if there is none
std::string ReadShaderFile(const std::string& path, bool base64, FileSource& files = disk_files(),
                           ReadStatus* status = nullptr);

/// Decodes base64 text, four characters at a time, nothing skipped: a line break is an error. '+'
/// and '-' have the value 62, '/' and '_' 63; '=' and '.' are padding, which ends its group alone;
/// a last group may lack its padding.
///
/// @returns the bytes; empty if any character is wrong
std::string DecodeBase64(std::string_view text);
