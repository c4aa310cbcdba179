#pragma once

#include "BE/IProject.h"
#include "JsonReader.h"
#include "KSL/InterfaceRef.h"

#include <string>

namespace platform::core {

class Project;

// The version this build writes, and the newest it reads.
inline constexpr int kProjectFormatVersion = 3;

// The file's text for the project (see platform/PROJECT_FORMAT.md): objects
// and arrays one member or element a line, indented by four spaces, except
// that each caption (an element of a "captions" array) takes one line without
// spaces, which keeps large streams quick to parse while the file stays
// readable line by line. Throws JsonValueError for a value the file cannot
// hold.
std::string ProjectJsonText(const BE::IProject& project);

// A new project built from the file's top-level object, without announcing
// anything and with an empty, clean undo history. Throws JsonValueError
// naming the member that is missing or wrong.
KSL::InterfaceRef<Project> ProjectFromJson(const JsonReader& root);

} // namespace platform::core
