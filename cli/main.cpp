// corvala-captions: convert, check and describe caption files from the command
// line. Exit codes: 0 success, 1 a problem with a file, 2 a usage error.
#include "Commands.h"

#include <CLI/CLI.hpp>

#include <iostream>

int main(int argc, char** argv) {
    using namespace captioncli;
    CLI::App app{
        "Converts, checks and describes caption files (SubRip, WebVTT, SCC, TTML, EBU STL).",
        "corvala-captions"};
    app.require_subcommand(1);

    ConvertOptions convert;
    std::string to;
    double frameRate = 0.0;
    CLI::App* convertCommand =
        app.add_subcommand("convert", "Converts IN to OUT's format (or --to's).");
    convertCommand
        ->add_option("IN", convert.input,
                     "the caption file to read; its format is found from its content")
        ->required();
    convertCommand->add_option("OUT", convert.output, "the file to write")->required();
    convertCommand->add_option("--to", to, "the output format: srt, vtt, scc, ttml or stl");
    CLI::Option* rateOption = convertCommand->add_option(
        "--frame-rate", frameRate, "frames per second: 29.97 for SCC, 25 or 30 for EBU STL");
    convertCommand->add_flag("--drop-frame", convert.dropFrame,
                             "write SCC with drop-frame time codes");
    convertCommand->add_flag("--json", convert.json, "report as JSON");

    std::string checkFile;
    CheckLimits limits;
    bool checkJson = false;
    CLI::App* checkCommand = app.add_subcommand(
        "check", "Checks reading rates, durations, overlaps and CEA-608 legality.");
    checkCommand->add_option("FILE", checkFile, "the caption file to check")->required();
    checkCommand
        ->add_option("--max-cps", limits.maxCharactersPerSecond,
                     "the highest reading rate, in characters per second")
        ->capture_default_str();
    checkCommand
        ->add_option("--min-duration", limits.minDurationSeconds,
                     "the shortest caption, in seconds")
        ->capture_default_str();
    checkCommand->add_flag("--cea608", limits.cea608,
                           "check CEA-608 legality even for a file of another format");
    checkCommand->add_flag("--json", checkJson, "report as JSON");

    std::string infoFile;
    bool infoJson = false;
    CLI::App* infoCommand = app.add_subcommand("info", "Describes a caption file.");
    infoCommand->add_option("FILE", infoFile, "the caption file")->required();
    infoCommand->add_flag("--json", infoJson, "report as JSON");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitOk : kExitUsage;
    }
    if (convertCommand->parsed()) {
        if (!to.empty()) {
            convert.to = FormatOfName(to);
            if (!convert.to) {
                std::cerr << "corvala-captions: unknown format \"" << to
                          << "\" (srt, vtt, scc, ttml, stl)\n";
                return kExitUsage;
            }
        }
        if (rateOption->count() > 0) {
            convert.frameRate = frameRate;
        }
        return RunConvert(convert, std::cout, std::cerr);
    }
    if (checkCommand->parsed()) {
        return RunCheck(checkFile, limits, checkJson, std::cout, std::cerr);
    }
    return RunInfo(infoFile, infoJson, std::cout, std::cerr);
}
