#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace captioncli {

// The bytes of a file: a regular file is mapped into memory, so reading it
// copies nothing; anything else (a pipe, an empty file) is read.
class FileBytes {
public:
    // Nothing when the file cannot be opened or read.
    static std::optional<FileBytes> Open(const std::string& path);

    FileBytes(FileBytes&& other) noexcept;
    FileBytes& operator=(FileBytes&&) = delete;
    FileBytes(const FileBytes&) = delete;
    ~FileBytes();

    std::string_view View() const;

private:
    FileBytes() = default;

    void* mapping_ = nullptr;
    std::size_t mappedSize_ = 0;
    std::string read_;
};

// Makes the file at `path` hold exactly `bytes`; false when it cannot be
// written, and then a file that was there is left as it was. A pipe or device
// at the path is written to as it is.
bool WriteFileBytes(const std::string& path, std::string_view bytes);

} // namespace captioncli
