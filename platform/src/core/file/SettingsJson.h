#pragma once

#include "BE/MasterClipSettings.h"
#include "BE/SequenceSettings.h"
#include "JsonReader.h"

#include <QJsonObject>

#include <string>

namespace platform::core {

// A master clip's and a sequence's settings as members of their object in the
// project file (see platform/PROJECT_FORMAT.md). The writers add to the object;
// they and the readers throw JsonValueError naming the member at fault.
void WriteClipSettings(const BE::MasterClipSettings& settings, const std::string& path,
                       QJsonObject& object);
BE::MasterClipSettings ReadClipSettings(const JsonReader& reader);

void WriteSequenceSettings(const BE::SequenceSettings& settings, const std::string& path,
                           QJsonObject& object);
BE::SequenceSettings ReadSequenceSettings(const JsonReader& reader);

} // namespace platform::core
