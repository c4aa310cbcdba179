#include "JournalEditScript.h"

#include "BE/IBin.h"
#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/ISequence.h"
#include "MZ/Captioning.h"

#include <string>

namespace host_test {
namespace {

constexpr std::u16string_view kTypingName = u"$$$/Corvala/Test/Typing=Typing";

// The caption with its first line's last span extended by one character.
zelcaptioning::CaptionPtr Typed(const zelcaptioning::Caption& caption, char16_t letter) {
    zelcaptioning::CaptionPtr typed(new zelcaptioning::Caption(caption));
    if (typed->GetNumParagraphs() == 0) {
        zelcaptioning::CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new zelcaptioning::CaptionTextSpan);
        typed->AppendCaptionTextParagraph(paragraph);
    }
    const auto paragraph = typed->GetCaptionTextParagraph(0);
    if (paragraph->GetNumSpans() == 0) {
        paragraph->AppendCaptionTextSpan(new zelcaptioning::CaptionTextSpan);
    }
    const auto span = paragraph->GetCaptionTextSpan(paragraph->GetNumSpans() - 1);
    span->SetCaptionText(span->GetCaptionText() + letter);
    return typed;
}

} // namespace

void JournalEditScript::ApplyNext(const KSL::InterfaceRef<BE::IProject>& project) {
    const KSL::InterfaceRef<BE::IMasterClip> clip = project->GetBin(0)->GetMasterClip(0);
    const auto letter = [this] {
        return static_cast<char16_t>(u'a' + (typed_++ % 26));
    };
    if (pendingKeystrokes_ > 0) {
        --pendingKeystrokes_;
        const auto typing = clip->GetCaptioningStream(typingStream_);
        if (typingCaption_ < typing->GetCaptionCount()) {
            const auto caption = typing->GetCaption(typingCaption_);
            MZ::Captioning(typing).ReplaceCaption(caption, Typed(*caption, letter()), false, u"");
            return;
        }
    }
    typingStream_ = random_() % clip->GetCaptioningStreamCount();
    const KSL::InterfaceRef<BE::ICaptioningStream> stream =
        clip->GetCaptioningStream(typingStream_);
    MZ::Captioning captioning(stream);
    BE::IUndoHistory& history = project->GetUndoHistory();
    const std::uint32_t roll = random_() % 100;
    const std::size_t count = stream->GetCaptionCount();
    const auto pick = [&] {
        return stream->GetCaption(random_() % count);
    };

    if (roll < 12 && history.CanUndo()) {
        history.Undo();
    } else if (roll < 20 && history.CanRedo()) {
        history.Redo();
    } else if (roll < 30 || count < 3) {
        const std::int64_t second = 254016000000;
        const std::int64_t begin = static_cast<std::int64_t>(random_() % 600) * second / 10;
        const auto caption = Typed(zelcaptioning::Caption(), letter());
        caption->SetBeginTime(zelmediatypes::TickTime(begin));
        caption->SetEndTime(zelmediatypes::TickTime(begin + 2 * second));
        captioning.AddCaption(caption);
    } else if (roll < 36) {
        captioning.RemoveCaption(pick(), random_() % 2 == 0);
    } else if (roll < 42) {
        const auto caption = pick();
        const zelmediatypes::TickTime shift(static_cast<std::int64_t>(random_() % 1000) * 8467200);
        captioning.UpdateCaption(caption, caption->GetBeginTime() + shift,
                                 caption->GetEndTime() - caption->GetBeginTime(), true,
                                 zelmediatypes::kTimeDisplay_2997DropTimecode);
    } else if (roll < 46) {
        const KSL::InterfaceRef<BE::ISequence> sequence = project->GetBin(0)->GetSequence(0);
        BE::SequenceSettings settings = sequence->GetSettings();
        settings.name = u"Cut " + std::u16string(1, letter());
        project->SetSequenceSettings(sequence, settings, BE::UndoMode::kWithoutUndoStep);
    } else {
        // Typing into a caption: a committed keystroke (an undo step), or a
        // burst of live updates that the next edits go on with.
        typingCaption_ = random_() % count;
        const auto caption = stream->GetCaption(typingCaption_);
        const bool committed = random_() % 3 == 0;
        captioning.ReplaceCaption(caption, Typed(*caption, letter()), committed,
                                  committed ? zelcore::UTF16String(kTypingName) : u"");
        pendingKeystrokes_ = committed ? 0 : static_cast<int>(random_() % 6);
    }
}

} // namespace host_test
