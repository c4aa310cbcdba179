#include "MZ/Captioning.h"

#include "CaptionEdits.h"
#include "KSL/Exception.h"
#include "Project.h"
#include "zelmediatypes/FrameRate.h"

#include <optional>

namespace MZ {
namespace {

using platform::core::CaptioningStream;

constexpr std::u16string_view kAddCaptionName =
    u"$$$/Corvala/Platform/Captioning/AddCaption=Add Caption";
constexpr std::u16string_view kDeleteCaptionName =
    u"$$$/Corvala/Platform/Captioning/DeleteCaption=Delete Caption";
constexpr std::u16string_view kChangeTimesName =
    u"$$$/Corvala/Platform/Captioning/ChangeCaptionTimes=Change Caption Times";

struct StreamAccess {
    CaptioningStream& stream;
    platform::core::Project& project;
};

StreamAccess Access(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    CaptioningStream* impl = platform::core::ImplementationOf<CaptioningStream>(stream);
    if (!impl || !impl->GetProject()) {
        throw KSL::Exception("the caption stream is not part of a project");
    }
    return {*impl, *impl->GetProject()};
}

KSL::InterfaceRef<CaptioningStream> RefTo(CaptioningStream& stream) {
    return KSL::InterfaceRef<CaptioningStream>(&stream);
}

// Rounds both down to the start of their frame at the rate the display counts;
// a display that counts no frames leaves them as they are.
void AlignToTimeDisplayFrames(zelmediatypes::TimeDisplay display, zelmediatypes::TickTime& begin,
                              zelmediatypes::TickTime& duration) {
    const std::optional<zelmediatypes::FrameRate> rate = zelmediatypes::VideoFrameRate(display);
    if (!rate) {
        return;
    }
    begin = begin.AlignToFrame(*rate);
    duration = duration.AlignToFrame(*rate);
}

void RequireCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption) {
    if (!caption) {
        throw KSL::Exception("an empty caption reference was passed");
    }
}

std::size_t RequireIndexIn(const CaptioningStream& stream, const zelcaptioning::Caption* caption) {
    const auto index = stream.FindCaptionIndex(caption);
    if (!index) {
        throw KSL::Exception("the caption is not part of this caption stream");
    }
    return *index;
}

} // namespace

Captioning::Captioning(KSL::InterfaceRef<BE::ICaptioningStream> stream)
    : stream_(std::move(stream)) {
    Access(stream_);
}

std::size_t Captioning::GetNumberOfCaptionBlocks() const {
    return stream_->GetCaptionCount();
}

void Captioning::GetCaptionBlockTimes(std::vector<CaptionBlockTimes>& times) const {
    const auto& entries = Access(stream_).stream.GetEntries();
    times.clear();
    times.reserve(entries.size());
    for (const auto& entry : entries) {
        times.push_back({entry.beginTime, entry.endTime});
    }
}

boost::intrusive_ptr<zelcaptioning::Caption>
Captioning::GetCaptionBlock(const zelmediatypes::TickTime& time) const {
    const CaptioningStream& stream = Access(stream_).stream;
    const auto& entries = stream.GetEntries();
    const std::size_t first = stream.QueryLowerBound(time);
    if (first < entries.size() && entries[first].beginTime == time) {
        return entries[first].caption;
    }
    if (first > 0 && time < entries[first - 1].endTime) {
        return entries[first - 1].caption;
    }
    return nullptr;
}

zelcore::UTF16String
Captioning::ConvertCaptionBlockToText(const boost::intrusive_ptr<zelcaptioning::Caption>& caption) {
    zelcore::UTF16String text;
    if (!caption) {
        return text;
    }
    std::vector<boost::intrusive_ptr<zelcaptioning::CaptionTextParagraph>> paragraphs;
    caption->GetCaptionTextParagraphs(paragraphs);
    std::vector<boost::intrusive_ptr<zelcaptioning::CaptionTextSpan>> spans;
    for (std::size_t p = 0; p < paragraphs.size(); ++p) {
        if (p > 0) {
            text += u'\n';
        }
        paragraphs[p]->GetCaptionTextSpans(spans);
        for (const auto& span : spans) {
            text += span->GetCaptionText();
        }
    }
    return text;
}

void Captioning::GetCaptionsInTimeRange(
    const zelmediatypes::TickTime& from, const zelmediatypes::TickTime& to,
    std::vector<boost::intrusive_ptr<zelcaptioning::Caption>>& out) const {
    const CaptioningStream& stream = Access(stream_).stream;
    const auto& entries = stream.GetEntries();
    out.clear();
    const std::size_t end = stream.QueryUpperBound(to);
    for (std::size_t i = 0; i < end; ++i) {
        if (!(entries[i].endTime < from)) {
            out.push_back(entries[i].caption);
        }
    }
}

void Captioning::AddCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption) {
    RequireCaption(caption);
    StreamAccess access = Access(stream_);
    if (access.stream.FindStoredCaptionIndex(caption.get())) {
        throw KSL::Exception("the caption is already part of this caption stream");
    }
    access.project.Execute(std::make_unique<platform::core::CaptionMembershipEdit>(
                               RefTo(access.stream), caption, platform::core::Membership::kAdd),
                           BE::UndoMode::kAsUndoStep, kAddCaptionName);
}

void Captioning::ReplaceCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& target,
                                const boost::intrusive_ptr<zelcaptioning::Caption>& value,
                                bool undoable, const zelcore::UTF16String& actionName) {
    RequireCaption(target);
    RequireCaption(value);
    StreamAccess access = Access(stream_);
    RequireIndexIn(access.stream, target.get());
    access.project.Execute(
        std::make_unique<platform::core::ReplaceCaptionEdit>(RefTo(access.stream), target, *value),
        undoable ? BE::UndoMode::kAsUndoStep : BE::UndoMode::kWithoutUndoStep,
        zelcore::View(actionName));
}

void Captioning::RemoveCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption,
                               bool ripple) {
    RequireCaption(caption);
    StreamAccess access = Access(stream_);
    RequireIndexIn(access.stream, caption.get());
    std::unique_ptr<platform::core::ModelEdit> edit;
    if (ripple) {
        edit = std::make_unique<platform::core::RippleRemoveCaptionEdit>(RefTo(access.stream),
                                                                         caption);
    } else {
        edit = std::make_unique<platform::core::CaptionMembershipEdit>(
            RefTo(access.stream), caption, platform::core::Membership::kRemove);
    }
    access.project.Execute(std::move(edit), BE::UndoMode::kAsUndoStep, kDeleteCaptionName);
}

void Captioning::UpdateCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption,
                               const zelmediatypes::TickTime& beginTime,
                               const zelmediatypes::TickTime& duration, bool alignToFrames,
                               zelmediatypes::TimeDisplay timeDisplay) {
    RequireCaption(caption);
    StreamAccess access = Access(stream_);
    RequireIndexIn(access.stream, caption.get());
    zelmediatypes::TickTime begin = beginTime;
    zelmediatypes::TickTime length = duration;
    if (alignToFrames) {
        AlignToTimeDisplayFrames(timeDisplay, begin, length);
    }
    zelcaptioning::Caption retimed(*caption);
    retimed.SetBeginTime(begin);
    retimed.SetEndTime(begin + length);
    access.project.Execute(std::make_unique<platform::core::ReplaceCaptionEdit>(
                               RefTo(access.stream), caption, retimed),
                           BE::UndoMode::kAsUndoStep, kChangeTimesName);
}

} // namespace MZ
