#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <optional>
#include <string>
#include <string_view>

namespace BE {

// Why a project file could not be read or written. location is where the
// problem is: "line L, column C" for a syntax error (columns count bytes), a
// member path such as "bins[0].clips[1].streams[0].captions[5].begin" for a
// wrong value, or the file path for a file that cannot be read or written.
struct ProjectFileError {
    std::string location;
    std::string problem;

    std::string ToString() const { return location + ": " + problem; }
};

struct OpenProjectResult {
    KSL::InterfaceRef<IProject> project; // empty when error is set
    std::optional<ProjectFileError> error;
    // The file's identity for its edit journal (BE::ProjectFileDigest); set
    // by ReadProjectFile on success.
    std::string fileDigest;
};

// The project file format is described in platform/PROJECT_FORMAT.md. Reading
// builds a new project with an empty, clean undo history, announcing nothing;
// on any error no project is returned, so the caller's project stays as it was.
OpenProjectResult ReadProjectFile(const std::string& pathUtf8);
OpenProjectResult ParseProject(std::string_view fileBytes);

struct SerializedProject {
    std::string bytes; // empty when error is set
    std::optional<ProjectFileError> error;
};

// The file's content for the project. Fails, naming the member, for a value a
// project file cannot hold (a number that is not finite, an enumeration value
// without a name). Saving, opening and saving again gives the same bytes.
// Throws KSL::Exception for an empty reference.
SerializedProject SerializeProject(const KSL::InterfaceRef<IProject>& project);

// Writes atomically: the file is replaced only once the whole new content is
// on disk, so a failed save leaves the old file intact. Marks the project's
// undo history clean on success, and sets writtenDigest, when given, to the
// new file's identity (BE::ProjectFileDigest).
std::optional<ProjectFileError> WriteProjectFile(const KSL::InterfaceRef<IProject>& project,
                                                 const std::string& pathUtf8,
                                                 std::string* writtenDigest = nullptr);

} // namespace BE
