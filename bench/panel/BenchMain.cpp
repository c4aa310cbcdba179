// Runs the panel's benchmarks in one offscreen application with the plug-in's
// code registered, as loading libHandlerCaptions.so registers it.
#include "HSL/Ids.h"
#include "HSL/Module.h"
#include "ML/FrameService.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    ML::FrameService::Start();
    const std::unique_ptr<HSL::Module> module(
        HSL::Module::FindFactory(HSL::kCaptionsModuleID)(u"libHandlerCaptions (linked)"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    ML::FrameService::Shutdown();
    return 0;
}
