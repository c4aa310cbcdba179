#include "FileBytes.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <utility>

namespace captioncli {

std::optional<FileBytes> FileBytes::Open(const std::string& path) {
    FileBytes bytes;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        // Mapped with all its pages at once: reading it then takes no page fault.
        void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
        if (mapping != MAP_FAILED) {
            bytes.mapping_ = mapping;
            bytes.mappedSize_ = size;
        }
    }
    ::close(descriptor);
    if (bytes.mapping_ == nullptr) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            return std::nullopt;
        }
        std::ostringstream read;
        read << file.rdbuf();
        bytes.read_ = std::move(read).str();
    }
    return bytes;
}

FileBytes::FileBytes(FileBytes&& other) noexcept
    : mapping_(std::exchange(other.mapping_, nullptr))
    , mappedSize_(std::exchange(other.mappedSize_, 0))
    , read_(std::move(other.read_)) {}

FileBytes::~FileBytes() {
    if (mapping_ != nullptr) {
        ::munmap(mapping_, mappedSize_);
    }
}

namespace {

bool WriteAll(int descriptor, std::string_view bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<FileReplacement> FileReplacement::Begin(const std::string& path) {
    struct stat existing {};
    const bool exists = ::stat(path.c_str(), &existing) == 0;
    if (exists && !S_ISREG(existing.st_mode)) {
        return std::nullopt;
    }
    std::string temporary = path + ".XXXXXX";
    const int descriptor = ::mkstemp(temporary.data());
    if (descriptor < 0) {
        return std::nullopt;
    }
    mode_t mode = existing.st_mode & 07777;
    if (!exists) {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    return FileReplacement(path, std::move(temporary), descriptor, mode);
}

FileReplacement::FileReplacement(FileReplacement&& other) noexcept
    : path_(std::move(other.path_))
    , temporary_(std::move(other.temporary_))
    , descriptor_(std::exchange(other.descriptor_, -1))
    , mode_(other.mode_)
    , failed_(other.failed_) {}

FileReplacement::~FileReplacement() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        ::unlink(temporary_.c_str());
    }
}

void FileReplacement::Append(std::string_view bytes) {
    failed_ = failed_ || !WriteAll(descriptor_, bytes);
}

void FileReplacement::Restart() {
    failed_ = failed_ || ::ftruncate(descriptor_, 0) != 0 || ::lseek(descriptor_, 0, SEEK_SET) != 0;
}

bool FileReplacement::Commit() {
    bool written = !failed_ && ::fchmod(descriptor_, static_cast<mode_t>(mode_)) == 0;
    written = ::close(std::exchange(descriptor_, -1)) == 0 && written;
    if (!written || ::rename(temporary_.c_str(), path_.c_str()) != 0) {
        ::unlink(temporary_.c_str());
        return false;
    }
    return true;
}

bool WriteFileBytes(const std::string& path, std::string_view bytes) {
    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0 && !S_ISREG(existing.st_mode)) {
        // A pipe or a device cannot be replaced: it takes the bytes as they come.
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor < 0) {
            return false;
        }
        const bool written = WriteAll(descriptor, bytes);
        return ::close(descriptor) == 0 && written;
    }
    std::optional<FileReplacement> file = FileReplacement::Begin(path);
    if (!file) {
        return false;
    }
    file->Append(bytes);
    return file->Commit();
}

std::string_view FileBytes::View() const {
    return mapping_ != nullptr ? std::string_view(static_cast<const char*>(mapping_), mappedSize_)
                               : std::string_view(read_);
}

} // namespace captioncli
