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
        void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (mapping != MAP_FAILED) {
            ::madvise(mapping, size, MADV_SEQUENTIAL | MADV_WILLNEED);
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

bool WriteFileBytes(const std::string& path, std::string_view bytes) {
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        return false;
    }
    bool written = true;
    for (std::size_t done = 0; written && done < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count > 0) {
            done += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            written = false;
        }
    }
    struct stat status {};
    if (written && ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        written = ::ftruncate(descriptor, static_cast<off_t>(bytes.size())) == 0;
    }
    return ::close(descriptor) == 0 && written;
}

std::string_view FileBytes::View() const {
    return mapping_ != nullptr ? std::string_view(static_cast<const char*>(mapping_), mappedSize_)
                               : std::string_view(read_);
}

} // namespace captioncli
