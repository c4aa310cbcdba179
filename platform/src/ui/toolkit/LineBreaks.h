#pragma once

#include <QString>

#include <cstdint>

namespace platform::ui {

// Text controls write line breaks as CR LF in their values and offsets; the
// document under them has one character per break.

QString WithCRLFBreaks(const QString& documentText);
// Accepts CR LF, LF and CR breaks.
QString WithDocumentBreaks(const QString& value);

// The value offset of a document position, and back. A value offset inside a
// CR LF pair maps to the position before the break.
std::int64_t ValueOffsetOf(const QString& documentText, std::int64_t position);
std::int64_t DocumentPositionOf(const QString& documentText, std::int64_t valueOffset);

} // namespace platform::ui
