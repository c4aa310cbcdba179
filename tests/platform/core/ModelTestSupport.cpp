#include "ModelTestSupport.h"

#include "BE/CaptionMessages.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "zelcore/UTF16String.h"

#include <cmath>
#include <sstream>

namespace platform_test {

zelmediatypes::TickTime Ticks(std::int64_t ticks) {
    return zelmediatypes::TickTime(ticks);
}

zelmediatypes::TickTime Seconds(double seconds) {
    const auto milliseconds = static_cast<std::int64_t>(std::llround(seconds * 1000.0));
    return zelmediatypes::TickTime(milliseconds * (zelmediatypes::kTicksPerSecond / 1000));
}

boost::intrusive_ptr<zelcaptioning::Caption>
MakeCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end, const std::string& text) {
    boost::intrusive_ptr<zelcaptioning::Caption> caption(new zelcaptioning::Caption);
    caption->SetBeginTime(begin);
    caption->SetEndTime(end);
    caption->SetCaptionType(zelcaptioning::kCaptionType_PopOn);
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        boost::intrusive_ptr<zelcaptioning::CaptionTextParagraph> paragraph(
            new zelcaptioning::CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(boost::intrusive_ptr<zelcaptioning::CaptionTextSpan>(
            new zelcaptioning::CaptionTextSpan(zelcore::ToUTF16(line), {})));
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

std::string TextOf(const zelcaptioning::Caption& caption) {
    return zelcore::ToUTF8(caption.GetPlainText());
}

BE::MasterClipSettings TestClipSettings(const char* name) {
    BE::MasterClipSettings settings;
    settings.name = zelcore::ToUTF16(name);
    settings.media.kind = BE::MediaSource::Kind::kGeneratedTestSource;
    settings.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080);
    settings.frameRate = zelmediatypes::kFrameRate_2997;
    settings.duration = zelmediatypes::TickTime::FromSeconds(60);
    return settings;
}

ClipFixture MakeClipFixture() {
    ClipFixture fixture;
    fixture.project = BE::CreateProject();
    fixture.bin =
        fixture.project->AddBin(zelcore::ToUTF16("Footage"), BE::UndoMode::kWithoutUndoStep);
    fixture.clip = fixture.project->AddMasterClip(fixture.bin, TestClipSettings("Interview"),
                                                  BE::UndoMode::kWithoutUndoStep);
    fixture.project->GetUndoHistory().MarkClean();
    return fixture;
}

CaptionChangeRecorder::CaptionChangeRecorder(
    const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    KSL::StationUtils::AddListener(KSL::StationOf(stream), this);
}

namespace {

const char* KindName(BE::CaptionChangeKind kind) {
    switch (kind) {
    case BE::CaptionChangeKind::kAdded:
        return "added";
    case BE::CaptionChangeKind::kChanged:
        return "changed";
    case BE::CaptionChangeKind::kRemoved:
        return "removed";
    }
    return "?";
}

} // namespace

bool CaptionChangeRecorder::HandleMessage(const KSL::Message& message) {
    if (const auto* changed = message.As<BE::CaptionsChangedMessage>()) {
        for (const auto& [stream, change] : changed->GetChanges()) {
            lines.push_back(std::string(KindName(change.kind)) + " " + TextOf(*change.caption) +
                            " @" + std::to_string(change.oldBeginTime.GetTicks()));
        }
        return true;
    }
    if (const auto* moved = message.As<BE::CaptionsMovedMessage>()) {
        for (const auto& move : moved->GetMoves()) {
            lines.push_back("moved " + TextOf(*move.caption) + " " +
                            std::to_string(move.oldBeginTime.GetTicks()) + "->" +
                            std::to_string(move.newBeginTime.GetTicks()));
        }
        return true;
    }
    return false;
}

} // namespace platform_test
