// Any bytes through the project file reader. A refused file names where and
// what; an accepted one saves, opens again and saves again to the same bytes.
#include "BE/ProjectFile.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const BE::OpenProjectResult opened = BE::ParseProject(bytes);
    if (opened.error) {
        Require(!opened.project, "a refused file gave a project");
        Require(!opened.error->location.empty() && !opened.error->problem.empty(),
                "an error without its place or problem");
        return 0;
    }
    Require(static_cast<bool>(opened.project), "an accepted file gave no project");
    const BE::SerializedProject saved = BE::SerializeProject(opened.project);
    if (saved.error) {
        // Values a file can hold but saving refuses (e.g. an unknown time display) are named.
        Require(!saved.error->location.empty(), "a save error without its place");
        return 0;
    }
    const BE::OpenProjectResult reopened = BE::ParseProject(saved.bytes);
    Require(!reopened.error, "a saved project does not open again");
    Require(BE::SerializeProject(reopened.project).bytes == saved.bytes,
            "save, open and save again changed the bytes");
    return 0;
}
