#pragma once

#include "BE/IProject.h"
#include "JsonReader.h"
#include "KSL/InterfaceRef.h"

#include <QJsonObject>

namespace platform::core {

class Project;

// The version this build writes, and the newest it reads.
inline constexpr int kProjectFormatVersion = 1;

// The whole project as the file's top-level object (see
// platform/PROJECT_FORMAT.md). Throws JsonValueError for a value the file
// cannot hold.
QJsonObject ProjectToJson(const BE::IProject& project);

// A new project built from the file's top-level object, without announcing
// anything and with an empty, clean undo history. Throws JsonValueError
// naming the member that is missing or wrong.
KSL::InterfaceRef<Project> ProjectFromJson(const JsonReader& root);

} // namespace platform::core
