#pragma once

#include "JsonReader.h"
#include "zelcaptioning/Caption.h"

#include <functional>
#include <string>

namespace platform::core {

// A caption with every attribute of its paragraphs and spans, as the project
// file holds it (see platform/PROJECT_FORMAT.md): members holding their
// default value are left out on writing and taken as the default on reading,
// so a caption is read back equal to the one written. Writing appends the
// caption as one line of compact JSON, members in ascending key order, and
// throws JsonValueError for a value the file cannot hold; path names the
// caption and is called only then.
void AppendCaptionJson(const zelcaptioning::Caption& caption,
                       const std::function<std::string()>& path, std::string& out);

// Throws JsonValueError naming the member that is missing or wrong.
zelcaptioning::CaptionPtr CaptionFromJson(const JsonReader& reader);

} // namespace platform::core
