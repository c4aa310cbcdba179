#pragma once

#include "BE/MasterClipSettings.h"
#include "KSL/Listener.h"
#include "KSL/Message.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace media_test {

// The duration of a frame of the 25 fps clips the tests write.
inline constexpr std::int64_t kTicksPerFrame = zelmediatypes::kTicksPerSecond / 25;

struct Completion {
    ML::RequestID requestID = 0;
    VF::VideoFrameRef frame;
    bool isFinal = false;
};

// A message of no meaning that tests post to see what arrives before and after it.
class MarkerMessage : public KSL::MessageOf<MarkerMessage> {
public:
    static constexpr const char* kTypeName = "media_test::MarkerMessage";
};

// Records every ML::RenderFrameCompletionMessage posted while it lives, and where among them a
// MarkerMessage arrived.
class CompletionCollector : public KSL::Listener {
public:
    CompletionCollector();

    // Runs the event loop until each request has had its final message (10 s at most, then
    // the test fails); returns the messages of the first request, in arrival order.
    std::vector<Completion> WaitFor(std::initializer_list<ML::RequestID> requestIDs);
    std::vector<Completion> WaitFor(const std::vector<ML::RequestID>& requestIDs);

    // The final frame of a request that has had one.
    VF::VideoFrameRef FinalFrame(ML::RequestID requestID) const;
    std::vector<Completion> MessagesOf(ML::RequestID requestID) const;

    std::vector<Completion> received;
    std::optional<std::size_t> markerIndex;

protected:
    bool HandleMessage(const KSL::Message& message) override;
};

// A fresh folder under the system's temporary folder, removed with the object.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();
    std::string PathOf(const std::string& fileName) const;

private:
    std::filesystem::path path_;
};

BE::MasterClipSettings FileClip(const std::string& pathUtf8, int widthPx, int heightPx,
                                zelmediatypes::FrameRate rate, zelmediatypes::TickTime duration);
BE::MasterClipSettings GeneratedClip(int widthPx, int heightPx, zelmediatypes::FrameRate rate,
                                     zelmediatypes::TickTime duration);

} // namespace media_test
