#include "JournalLines.h"

#include "Crc32.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace platform::core {

std::string JournalLine(std::string_view payload) {
    char checksum[9];
    std::snprintf(checksum, sizeof checksum, "%08x", static_cast<unsigned>(Crc32(payload)));
    std::string line;
    line.reserve(payload.size() + 10);
    line.append(checksum, 8).append(1, ' ').append(payload).append(1, '\n');
    return line;
}

std::string JournalHeaderLine(const std::string& projectDigest) {
    const QJsonObject header{
        {"format", QLatin1String(kJournalFormatMarker.data(),
                                 static_cast<qsizetype>(kJournalFormatMarker.size()))},
        {"version", kJournalFormatVersion},
        {"project", QString::fromStdString(projectDigest)}};
    return JournalLine(QJsonDocument(header).toJson(QJsonDocument::Compact).toStdString());
}

} // namespace platform::core
