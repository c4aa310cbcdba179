#pragma once

#include "KSL/Message.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"

#include <utility>

namespace ML {

// The station on which every frame request's completions are posted. A view that requests
// frames listens here and picks its own requests out by id; ids it does not know are someone
// else's.
inline constexpr const char* kStation_RenderFrameCompletion = "ML.Station.RenderFrameCompletion";

// A requested frame is ready, or a keyframe preview of it. Posted to the UI thread on
// kStation_RenderFrameCompletion, so it arrives on a later turn of the event loop than the
// request, even when the frame came from the cache.
class RenderFrameCompletionMessage : public KSL::MessageOf<RenderFrameCompletionMessage> {
public:
    static constexpr const char* kTypeName = "ML::RenderFrameCompletionMessage";

    RenderFrameCompletionMessage(RequestID requestID, VF::VideoFrameRef frame, bool isFinal)
        : requestID_(requestID)
        , frame_(std::move(frame))
        , isFinal_(isFinal) {}

    RequestID GetRequestID() const { return requestID_; }

    // Never null. An error frame (VF::VideoFrame::IsError) when the media could not be read;
    // its text names the file and the problem.
    const VF::VideoFrameRef& GetFrame() const { return frame_; }

    // False for a keyframe preview (accuracy VF::FrameAccuracy::kKeyframe): a message with the
    // exact frame follows under the same id, unless the request is cancelled. True for the
    // last message of a request.
    bool IsFinal() const { return isFinal_; }

private:
    RequestID requestID_;
    VF::VideoFrameRef frame_;
    bool isFinal_;
};

} // namespace ML
