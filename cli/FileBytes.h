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

// A file's new content, written beside it and renamed over it only when whole:
// until Commit succeeds, a file that was at the path is left as it was.
class FileReplacement {
public:
    // Nothing when there is something other than a file at `path` (a pipe, a
    // device, a folder), or when no file can be made beside it.
    static std::optional<FileReplacement> Begin(const std::string& path);

    FileReplacement(FileReplacement&& other) noexcept;
    FileReplacement& operator=(FileReplacement&&) = delete;
    FileReplacement(const FileReplacement&) = delete;
    ~FileReplacement(); // throws away what was not committed

    // Adds bytes to the new content. A failure is remembered: Commit then fails.
    void Append(std::string_view bytes);
    // Empties the new content, to start it again.
    void Restart();
    // Puts the new content in place of the file; false when it could not be
    // written whole, and then the old file is left as it was.
    bool Commit();

private:
    FileReplacement(std::string path, std::string temporary, int descriptor, unsigned mode)
        : path_(std::move(path))
        , temporary_(std::move(temporary))
        , descriptor_(descriptor)
        , mode_(mode) {}

    std::string path_;
    std::string temporary_;
    int descriptor_ = -1;
    unsigned mode_ = 0; // the permissions the file keeps or, when new, gets
    bool failed_ = false;
};

// Makes the file at `path` hold exactly `bytes`; false when it cannot be
// written, and then a file that was there is left as it was. A pipe or device
// at the path is written to as it is.
bool WriteFileBytes(const std::string& path, std::string_view bytes);

} // namespace captioncli
