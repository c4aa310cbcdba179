#include "FormatSamples.h"

#include <boost/property_tree/json_parser.hpp>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace test {

std::filesystem::path SamplesDir() {
    const std::filesystem::path dir(CORVALA_FORMAT_SAMPLES_DIR);
    return std::filesystem::is_directory(dir) ? dir : std::filesystem::path();
}

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::vector<std::filesystem::path> CaseFolders(const std::filesystem::path& formatFolder) {
    std::vector<std::filesystem::path> folders;
    for (const auto& entry : std::filesystem::directory_iterator(formatFolder)) {
        if (entry.is_directory()) {
            folders.push_back(entry.path());
        }
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

boost::property_tree::ptree ReadExpected(const std::filesystem::path& caseFolder) {
    boost::property_tree::ptree tree;
    boost::property_tree::read_json((caseFolder / "expected.json").string(), tree);
    return tree;
}

std::vector<std::string> LinesOf(const zelcaptioning::Caption& caption) {
    std::vector<std::string> lines;
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        lines.push_back(zelcore::ToUTF8(caption.GetCaptionTextParagraph(i)->GetText()));
    }
    return lines;
}

std::int64_t MillisecondsOf(const std::string& clock) {
    int hours = 0, minutes = 0, seconds = 0, milliseconds = 0;
    std::sscanf(clock.c_str(), "%d:%d:%d.%d", &hours, &minutes, &seconds, &milliseconds);
    return ((hours * 60LL + minutes) * 60 + seconds) * 1000 + milliseconds;
}

std::int64_t MillisecondsOf(zelmediatypes::TickTime time) {
    return time.GetTicks() / (zelmediatypes::kTicksPerSecond / 1000);
}

} // namespace test
