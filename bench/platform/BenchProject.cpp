#include "BenchProject.h"

#include "MZ/Captioning.h"
#include "zelcaptioning/Caption.h"

#include <string>

namespace platform_bench {

StreamProject MakeStreamProject(std::size_t captionCount) {
    StreamProject result;
    result.project = BE::CreateProject();
    result.stream = AddCaptionedClip(result.project, captionCount);
    result.project->GetUndoHistory().Clear();
    return result;
}

KSL::InterfaceRef<BE::ICaptioningStream>
AddCaptionedClip(const KSL::InterfaceRef<BE::IProject>& project, std::size_t captionCount,
                 std::int32_t linesPerCaption, zelcaptioning::StreamFormat format) {
    using zelmediatypes::TickTime;
    const BE::UndoMode once = BE::UndoMode::kWithoutUndoStep;
    const auto bin = project->AddBin(zelcore::ToUTF16("Bench"), once);
    BE::MasterClipSettings settings;
    settings.name = zelcore::ToUTF16("Long clip");
    settings.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 1920, 1080);
    const auto clip = project->AddMasterClip(bin, settings, once);
    const auto stream = project->AddCaptioningStream(clip, format, once);
    MZ::Captioning captioning(stream);
    for (std::size_t i = 0; i < captionCount; ++i) {
        zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
        const TickTime begin = TickTime::FromSeconds(static_cast<std::int64_t>(i));
        caption->SetBeginTime(begin);
        caption->SetEndTime(begin + TickTime(zelmediatypes::kTicksPerSecond * 9 / 10));
        caption->SetCaptionType(zelcaptioning::kCaptionType_PopOn);
        for (std::int32_t line = 0; line < linesPerCaption; ++line) {
            zelcaptioning::CaptionTextParagraphPtr paragraph(
                new zelcaptioning::CaptionTextParagraph);
            zelcaptioning::TextSpanAttributes attributes;
            attributes.backgroundColor = zelcaptioning::kCaptioningColor_Black;
            paragraph->AppendCaptionTextSpan(
                zelcaptioning::CaptionTextSpanPtr(new zelcaptioning::CaptionTextSpan(
                    zelcore::ToUTF16("Caption number " + std::to_string(i)), attributes)));
            paragraph->SetCaptionPosition(
                {zelcaptioning::Rational(4, 32),
                 zelcaptioning::Rational(15 - linesPerCaption + line, 15)});
            caption->AppendCaptionTextParagraph(paragraph);
        }
        captioning.AddCaption(caption);
    }
    return stream;
}

} // namespace platform_bench
