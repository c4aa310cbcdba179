#include "BE/EditJournal.h"

#include "Crc32.h"
#include "JournalLines.h"
#include "file/JsonReader.h"

#include <QDateTime>
#include <QFile>
#include <QString>

#include <charconv>
#include <stdexcept>

#include <openssl/evp.h>

namespace BE {
namespace {

using platform::core::JsonReader;
using platform::core::JsonTree;
using platform::core::JsonValueError;

struct Line {
    std::string_view payload;
    std::uint64_t end = 0; // the offset just past the line feed
};

// The line starting at offset, or why it is not intact.
std::optional<Line> ReadLine(std::string_view bytes, std::uint64_t offset, std::string& problem) {
    const std::size_t feed = bytes.find('\n', offset);
    if (feed == std::string_view::npos) {
        problem = "torn: its " + std::to_string(bytes.size() - offset) +
                  " bytes end before the line does";
        return std::nullopt;
    }
    const std::string_view line = bytes.substr(offset, feed - offset);
    std::uint32_t checksum = 0;
    const auto parsed = std::from_chars(
        line.data(), line.data() + std::min<std::size_t>(8, line.size()), checksum, 16);
    if (line.size() < 9 || parsed.ptr != line.data() + 8 || line[8] != ' ') {
        problem = "it does not start with a checksum";
        return std::nullopt;
    }
    const std::string_view payload = line.substr(9);
    if (platform::core::Crc32(payload) != checksum) {
        problem = "its checksum does not match its content";
        return std::nullopt;
    }
    return Line{payload, feed + 1};
}

// The header's project digest; throws JsonValueError for a header of another
// format or a newer version.
std::string ReadHeader(std::string_view payload) {
    std::optional<platform::core::JsonSyntaxError> syntax;
    const JsonTree tree = JsonTree::Parse(payload, syntax);
    if (syntax) {
        throw JsonValueError("header", syntax->problem);
    }
    const JsonReader root(tree, "header");
    if (root.Member("format").String() != platform::core::kJournalFormatMarker) {
        root.Member("format").Fail("not an edit journal");
    }
    const std::int64_t version = root.Member("version").Integer(1, 1 << 30);
    if (version > platform::core::kJournalFormatVersion) {
        root.Member("version").Fail("version " + std::to_string(version) +
                                    " is newer than this build reads (" +
                                    std::to_string(platform::core::kJournalFormatVersion) + ")");
    }
    return root.Member("project").String();
}

} // namespace

// SHA-256 in hex. OpenSSL's SHA-256 uses the processor's SHA instructions
// where it has them, about ten times Qt's speed: the digest of a large file
// is a good part of the time to open it.
std::string ProjectFileDigest(std::string_view fileBytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (!EVP_Digest(fileBytes.data(), fileBytes.size(), digest, &length, EVP_sha256(), nullptr)) {
        throw std::runtime_error("SHA-256 is not available");
    }
    constexpr char kHex[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * length);
    for (unsigned int i = 0; i < length; ++i) {
        hex += kHex[digest[i] >> 4];
        hex += kHex[digest[i] & 0xF];
    }
    return hex;
}

std::string JournalPathFor(const std::string& projectPathUtf8) {
    return projectPathUtf8 + ".journal";
}

JournalReadResult ReadJournal(std::string_view bytes) {
    std::string problem;
    const std::optional<Line> header = ReadLine(bytes, 0, problem);
    if (!header) {
        return {std::nullopt, "the journal's header is not intact: " + problem};
    }
    JournalReading journal;
    try {
        journal.projectDigest = ReadHeader(header->payload);
    } catch (const JsonValueError& error) {
        return {std::nullopt, error.GetPath() + ": " + error.what()};
    }
    journal.headerBytes = header->end;
    std::uint64_t offset = header->end;
    while (offset < bytes.size()) {
        const std::optional<Line> line = ReadLine(bytes, offset, problem);
        if (!line) {
            journal.problem = "record " + std::to_string(journal.records.size() + 1) + " at byte " +
                              std::to_string(offset) + " was dropped: " + problem + "; the " +
                              std::to_string(bytes.size() - offset) +
                              " bytes from there on were not applied";
            break;
        }
        journal.records.emplace_back(line->payload);
        journal.recordEnds.push_back(line->end);
        offset = line->end;
    }
    return {std::move(journal), {}};
}

JournalReadResult ReadJournalFile(const std::string& pathUtf8) {
    QFile file(QString::fromStdString(pathUtf8));
    if (!file.open(QIODevice::ReadOnly)) {
        return {std::nullopt, pathUtf8 + ": " + file.errorString().toStdString()};
    }
    const QByteArray bytes = file.readAll();
    return ReadJournal(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

std::optional<std::string> SetJournalAside(const std::string& journalPathUtf8) {
    const QString stamp =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddTHH-mm-ss"));
    QString target = QString::fromStdString(journalPathUtf8) + ".set-aside-" + stamp;
    for (int n = 2; QFile::exists(target); ++n) {
        target = QString::fromStdString(journalPathUtf8) + ".set-aside-" + stamp + "-" +
                 QString::number(n);
    }
    if (!QFile::rename(QString::fromStdString(journalPathUtf8), target)) {
        return std::nullopt;
    }
    return target.toStdString();
}

} // namespace BE
