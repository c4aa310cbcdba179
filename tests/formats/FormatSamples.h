#pragma once

// Access to the shared caption samples and their expected.json files.
#include "zelcaptioning/Caption.h"

#include <boost/property_tree/ptree.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace test {

// The samples folder; empty when it is absent.
std::filesystem::path SamplesDir();

#define SKIP_WITHOUT_SAMPLES()                                                                     \
    do {                                                                                           \
        if (::test::SamplesDir().empty()) {                                                        \
            GTEST_SKIP() << "the shared format samples (" CORVALA_FORMAT_SAMPLES_DIR               \
                            ") are absent";                                                        \
        }                                                                                          \
    } while (false)

std::string ReadBytes(const std::filesystem::path& path);

// Every case folder of a format folder, in name order.
std::vector<std::filesystem::path> CaseFolders(const std::filesystem::path& formatFolder);

// Parsed expected.json; JSON null reads as the string "null".
boost::property_tree::ptree ReadExpected(const std::filesystem::path& caseFolder);

// The caption's lines as UTF-8 text.
std::vector<std::string> LinesOf(const zelcaptioning::Caption& caption);

// "HH:MM:SS.mmm" to milliseconds.
std::int64_t MillisecondsOf(const std::string& clock);
std::int64_t MillisecondsOf(zelmediatypes::TickTime time);

} // namespace test
