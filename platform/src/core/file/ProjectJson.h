#pragma once

#include "BE/IProject.h"
#include "JsonReader.h"
#include "KSL/InterfaceRef.h"

#include <QByteArray>
#include <QJsonObject>

namespace platform::core {

class Project;

// The version this build writes, and the newest it reads.
inline constexpr int kProjectFormatVersion = 2;

// The whole project as the file's top-level object (see
// platform/PROJECT_FORMAT.md). Throws JsonValueError for a value the file
// cannot hold.
QJsonObject ProjectToJson(const BE::IProject& project);

// The file's text for its top-level object: objects and arrays one member or
// element a line, indented by four spaces, except that each caption (an
// element of a "captions" array) takes one line without spaces, which keeps
// large streams quick to parse while the file stays readable line by line.
QByteArray ProjectJsonText(const QJsonObject& root);

// A new project built from the file's top-level object, without announcing
// anything and with an empty, clean undo history. Throws JsonValueError
// naming the member that is missing or wrong.
KSL::InterfaceRef<Project> ProjectFromJson(const JsonReader& root);

} // namespace platform::core
