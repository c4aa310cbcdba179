#pragma once

#include "JsonReader.h"
#include "zelcaptioning/Caption.h"

#include <QJsonObject>

#include <string>

namespace platform::core {

// A caption with every attribute of its paragraphs and spans, as the project
// file holds it (see platform/PROJECT_FORMAT.md). Writing throws
// JsonValueError for a value the file cannot hold; path names the caption.
QJsonObject CaptionToJson(const zelcaptioning::Caption& caption, const std::string& path);

// Throws JsonValueError naming the member that is missing or wrong.
zelcaptioning::CaptionPtr CaptionFromJson(const JsonReader& reader);

} // namespace platform::core
