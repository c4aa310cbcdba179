// Decodes the input into a caption and a sequence of edits, and checks after
// every edit that the editor's text equals a plain string model and that the
// caption stays well formed.
#include "EditingScript.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kMaxSteps = 64;

void Fail(const std::string& what, const std::string& problem) {
    std::fprintf(stderr, "%s: %s\n", what.c_str(), problem.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    test::EditingScript script([&](std::uint64_t low, std::uint64_t high) {
        return input.ConsumeIntegralInRange<std::uint64_t>(low, high);
    });
    script.Start();
    for (int step = 0; step < kMaxSteps && input.remaining_bytes() > 0; ++step) {
        const std::string operation = script.Step();
        if (const std::string problem = script.Check(); !problem.empty()) {
            Fail(operation, problem);
        }
    }
    if (const std::string problem = script.CheckRevert(); !problem.empty()) {
        Fail("revert", problem);
    }
    return 0;
}
