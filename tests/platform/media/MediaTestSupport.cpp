#include "MediaTestSupport.h"

#include "KSL/StationUtils.h"
#include "ML/RenderFrameCompletionMessage.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <string>
#include <unistd.h>

namespace media_test {

CompletionCollector::CompletionCollector() {
    KSL::StationUtils::AddListener(ML::kStation_RenderFrameCompletion, this);
}

std::vector<Completion>
CompletionCollector::WaitFor(std::initializer_list<ML::RequestID> requestIDs) {
    return WaitFor(std::vector<ML::RequestID>(requestIDs));
}

std::vector<Completion> CompletionCollector::WaitFor(const std::vector<ML::RequestID>& requestIDs) {
    const auto allFinal = [&] {
        return std::all_of(requestIDs.begin(), requestIDs.end(),
                           [&](ML::RequestID id) { return FinalFrame(id) != nullptr; });
    };
    QDeadlineTimer deadline(10000);
    while (!allFinal() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    }
    EXPECT_TRUE(allFinal()) << "no final frame within 10 s";
    return requestIDs.size() == 0 ? std::vector<Completion>() : MessagesOf(*requestIDs.begin());
}

VF::VideoFrameRef CompletionCollector::FinalFrame(ML::RequestID requestID) const {
    for (const Completion& completion : received) {
        if (completion.requestID == requestID && completion.isFinal) {
            return completion.frame;
        }
    }
    return nullptr;
}

std::vector<Completion> CompletionCollector::MessagesOf(ML::RequestID requestID) const {
    std::vector<Completion> messages;
    std::copy_if(received.begin(), received.end(), std::back_inserter(messages),
                 [requestID](const Completion& c) { return c.requestID == requestID; });
    return messages;
}

bool CompletionCollector::HandleMessage(const KSL::Message& message) {
    if (message.As<MarkerMessage>()) {
        markerIndex = received.size();
        return true;
    }
    const auto* completion = message.As<ML::RenderFrameCompletionMessage>();
    if (!completion) {
        return false;
    }
    received.push_back({completion->GetRequestID(), completion->GetFrame(), completion->IsFinal()});
    return true;
}

TempFolder::TempFolder() {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("corvala-media-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::PathOf(const std::string& fileName) const {
    return (path_ / fileName).string();
}

BE::MasterClipSettings FileClip(const std::string& pathUtf8, int widthPx, int heightPx,
                                zelmediatypes::FrameRate rate, zelmediatypes::TickTime duration) {
    return {.name = {},
            .kind = BE::MasterClipKind::kSingle,
            .media = {BE::MediaSource::Kind::kFile, pathUtf8},
            .frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, widthPx, heightPx),
            .frameRate = rate,
            .pixelAspectRatio = {1, 1},
            .duration = duration};
}

BE::MasterClipSettings GeneratedClip(int widthPx, int heightPx, zelmediatypes::FrameRate rate,
                                     zelmediatypes::TickTime duration) {
    return {.name = {},
            .kind = BE::MasterClipKind::kSingle,
            .media = {BE::MediaSource::Kind::kGeneratedTestSource, {}},
            .frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, widthPx, heightPx),
            .frameRate = rate,
            .pixelAspectRatio = {1, 1},
            .duration = duration};
}

} // namespace media_test
