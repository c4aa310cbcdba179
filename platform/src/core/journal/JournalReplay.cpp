#include "BE/EditJournal.h"

#include "EditTargets.h"
#include "KSL/Exception.h"
#include "file/CaptionJson.h"
#include "file/EnumNames.h"
#include "file/JsonValues.h"
#include "file/SettingsJson.h"
#include "model/CaptionEdits.h"
#include "model/NameEdit.h"
#include "model/SettingsEdits.h"
#include "model/StreamEdits.h"
#include "model/StructureEdits.h"

#include <algorithm>
#include <cstring>

namespace BE {
namespace {

using namespace platform::core;

// Applies an edit's reverse, for descriptions of what an undo does.
class RevertOf final : public ModelEdit {
public:
    explicit RevertOf(std::unique_ptr<ModelEdit> applied)
        : applied_(std::move(applied)) {}
    bool Apply() override { return applied_->Revert(); }
    bool Revert() override { return applied_->Apply(); }
    std::string Describe() const override { return applied_->DescribeRevert(); }
    std::string DescribeRevert() const override { return applied_->Describe(); }

private:
    std::unique_ptr<ModelEdit> applied_;
};

// A new stream of the description's "format" holding its "captions" in order.
KSL::InterfaceRef<CaptioningStream> StreamWithCaptions(const JsonReader& description) {
    KSL::InterfaceRef<CaptioningStream> stream(
        new CaptioningStream(ReadNamed(description.Member("format"), &StreamFormatNamed)));
    description.Member("captions").ForEachElement([&](const JsonReader& caption, std::size_t) {
        stream->Insert(CaptionFromJson(caption), stream->NextArrival());
    });
    return stream;
}

// The ripple removal of the caption at "index" as if it had been made: the
// captions after it, but for the "unshifted", back by its duration and in
// the stream's order again, so that reverting the removal restores them.
std::unique_ptr<ModelEdit> RippleRestoreFrom(const KSL::InterfaceRef<CaptioningStream>& stream,
                                             const JsonReader& edit) {
    zelcaptioning::CaptionPtr caption = CaptionFromJson(edit.Member("caption"));
    const std::size_t index =
        InsertionIndex(edit, "index", stream->GetEntries().size(), std::nullopt);
    std::vector<bool> unshifted(stream->GetEntries().size() - index, false);
    const JsonReader unshiftedMember = edit.Member("unshifted");
    unshiftedMember.ForEachElement([&](const JsonReader& element, std::size_t) {
        const std::int64_t at = element.Integer(0, kLargestExactJsonInteger);
        if (static_cast<std::uint64_t>(at) < index ||
            static_cast<std::uint64_t>(at) >= stream->GetEntries().size()) {
            element.Fail("no caption after the removed one has this index");
        }
        unshifted[static_cast<std::size_t>(at) - index] = true;
    });
    const zelmediatypes::TickTime duration = caption->GetEndTime() - caption->GetBeginTime();
    const std::uint64_t arrival = stream->ArrivalLandingAt(index, caption->GetBeginTime());
    std::vector<CaptioningStream::Entry> tail{
        {caption->GetBeginTime(), caption->GetEndTime(), arrival, caption}};
    for (std::size_t i = index; i < stream->GetEntries().size(); ++i) {
        CaptioningStream::Entry e = stream->GetEntries()[i];
        if (!unshifted[i - index]) {
            e.beginTime = e.beginTime + duration;
            e.endTime = e.endTime + duration;
        }
        tail.push_back(std::move(e));
    }
    std::stable_sort(tail.begin() + 1, tail.end(), &CaptioningStream::Precedes);
    return std::make_unique<RevertOf>(
        RippleRemoveCaptionEdit::Applied(stream, std::move(caption), index, std::move(tail)));
}

// The model edit a journal's edit description names, made as the model's own
// entry points make it.
std::unique_ptr<ModelEdit> EditFrom(Project& project, const JsonReader& edit) {
    const std::string kind = edit.Member("kind").String();
    if (kind == "addCaption" || kind == "removeCaption" || kind == "rippleRemoveCaption" ||
        kind == "replaceCaption") {
        const KSL::InterfaceRef<CaptioningStream> stream = StreamAt(project, edit);
        if (kind == "addCaption") {
            zelcaptioning::CaptionPtr caption = CaptionFromJson(edit.Member("caption"));
            const std::size_t index =
                InsertionIndex(edit, "index", stream->GetEntries().size(),
                               stream->LandingIndex(caption->GetBeginTime(), std::nullopt));
            const std::uint64_t arrival = stream->ArrivalLandingAt(index, caption->GetBeginTime());
            return std::make_unique<CaptionMembershipEdit>(stream, std::move(caption),
                                                           Membership::kAdd, arrival);
        }
        const boost::intrusive_ptr<zelcaptioning::Caption> caption = CaptionAt(*stream, edit);
        if (kind == "removeCaption") {
            return std::make_unique<CaptionMembershipEdit>(stream, caption, Membership::kRemove);
        }
        if (kind == "rippleRemoveCaption") {
            return std::make_unique<RippleRemoveCaptionEdit>(stream, caption);
        }
        return std::make_unique<ReplaceCaptionEdit>(stream, caption,
                                                    *CaptionFromJson(edit.Member("caption")));
    }
    if (kind == "rippleRestoreCaption") {
        return RippleRestoreFrom(StreamAt(project, edit), edit);
    }
    if (kind == "addBin") {
        return std::make_unique<AddBinEdit>(
            project, KSL::InterfaceRef<Bin>(new Bin(ReadText(edit.Member("name")))));
    }
    if (kind == "removeBin") {
        return std::make_unique<RevertOf>(
            std::make_unique<AddBinEdit>(project, BinAt(project, edit)));
    }
    if (kind == "addClip") {
        const KSL::InterfaceRef<Bin> bin = BinAt(project, edit);
        KSL::InterfaceRef<MasterClip> clip(
            new MasterClip(ReadClipSettings(edit.Member("settings"))));
        if (const auto streams = edit.FindMember("streams")) {
            streams->ForEachElement([&clip](const JsonReader& described, std::size_t) {
                KSL::InterfaceRef<CaptioningStream> stream = StreamWithCaptions(described);
                if (clip->FindCaptioningStream(stream->GetStreamFormat())) {
                    described.Member("format").Fail("the clip has a stream of this format already");
                }
                clip->AttachStream(std::move(stream));
            });
        }
        const std::size_t count = bin->GetClips().size();
        return std::make_unique<ClipMembershipEdit>(bin, clip, Membership::kAdd,
                                                    InsertionIndex(edit, "index", count, count));
    }
    if (kind == "removeClip") {
        const KSL::InterfaceRef<MasterClip> clip = ClipAt(project, edit);
        return std::make_unique<ClipMembershipEdit>(KSL::InterfaceRef<Bin>(clip->GetOwner()), clip,
                                                    Membership::kRemove);
    }
    if (kind == "clipSettings") {
        return std::make_unique<ClipSettingsEdit>(ClipAt(project, edit),
                                                  ReadClipSettings(edit.Member("settings")));
    }
    if (kind == "addSequence") {
        const KSL::InterfaceRef<Bin> bin = BinAt(project, edit);
        const std::size_t count = bin->GetSequences().size();
        return std::make_unique<AddSequenceEdit>(
            bin,
            KSL::InterfaceRef<Sequence>(
                new Sequence(ReadSequenceSettings(edit.Member("settings")))),
            InsertionIndex(edit, "index", count, count));
    }
    if (kind == "removeSequence") {
        const KSL::InterfaceRef<Sequence> sequence = SequenceAt(project, edit);
        return std::make_unique<RemoveSequenceEdit>(KSL::InterfaceRef<Bin>(sequence->GetOwner()),
                                                    sequence);
    }
    if (kind == "rename") {
        const zelcore::UTF16String name = ReadText(edit.Member("name"));
        KSL::InterfaceRef<BE::IProjectItem> item;
        if (edit.FindMember("clip")) {
            item = ClipAt(project, edit);
        } else if (edit.FindMember("sequence")) {
            item = SequenceAt(project, edit);
        } else {
            item = BinAt(project, edit);
        }
        return std::make_unique<NameEdit>(item, name);
    }
    if (kind == "sequenceSettings") {
        return std::make_unique<SequenceSettingsEdit>(
            SequenceAt(project, edit), ReadSequenceSettings(edit.Member("settings")));
    }
    if (kind == "addStream") {
        return std::make_unique<StreamMembershipEdit>(
            ClipAt(project, edit),
            KSL::InterfaceRef<CaptioningStream>(
                new CaptioningStream(ReadNamed(edit.Member("format"), &StreamFormatNamed))),
            Membership::kAdd);
    }
    if (kind == "putStream") {
        return std::make_unique<PutStreamEdit>(ClipAt(project, edit), StreamWithCaptions(edit));
    }
    if (kind == "removeStream") {
        const KSL::InterfaceRef<CaptioningStream> stream = StreamAt(project, edit);
        return std::make_unique<StreamMembershipEdit>(
            KSL::InterfaceRef<MasterClip>(stream->GetOwner()), stream, Membership::kRemove);
    }
    if (kind == "streamFormat") {
        return std::make_unique<StreamFormatEdit>(StreamAt(project, edit),
                                                  ReadNamed(edit.Member("to"), &StreamFormatNamed));
    }
    edit.Member("kind").Fail("unknown change \"" + kind + "\"");
}

// Applies an undo's or redo's description as a change without a step, or
// does nothing for a null one; false when it did not apply, as its step's
// edit did not either, which then dropped the step.
bool ApplyStepDescription(Project& project, const JsonReader& description) {
    if (description.IsNull()) {
        return false;
    }
    try {
        project.Execute(EditFrom(project, description), UndoMode::kWithoutUndoStep, {});
    } catch (const JsonValueError&) {
        throw;
    } catch (const KSL::Exception&) {
        return false;
    }
    return true;
}

// Replays records in order. The recovered history holds the steps the
// journal made; the history that recorded it may also have held older ones,
// below them (a new step drops every undone step above it). An undo of an
// older step, which this history cannot undo, is applied from its
// description; so is a redo while any older step is undone, since those come
// back first, and a redo with nothing to redo here: a step undone before the
// journal began.
class Replay {
public:
    explicit Replay(Project& project)
        : project_(project)
        , history_(project.GetUndoHistory()) {}

    void Record(std::string_view payload) {
        std::optional<JsonSyntaxError> syntax;
        const JsonTree tree = JsonTree::Parse(payload, syntax);
        if (syntax) {
            throw JsonValueError("byte " + std::to_string(syntax->offset), syntax->problem);
        }
        const JsonReader record(tree, "");
        const std::string op = record.Member("op").String();
        if (op == "edit") {
            Edit(record);
        } else if (op == "undo") {
            Undo(record);
        } else if (op == "redo") {
            Redo(record);
        } else if (op == "clearHistory") {
            history_.Clear();
            olderUndone_ = 0;
        } else {
            record.Member("op").Fail("unknown operation \"" + op + "\"");
        }
    }

    // The recovered history cannot redo what was undone of the older steps,
    // so it keeps nothing to redo then.
    void Finish() {
        if (olderUndone_ > 0) {
            project_.DropRedoSteps();
        }
    }

private:
    void Edit(const JsonReader& record) {
        const bool undoable = record.Member("undo").Bool();
        zelcore::UTF16String name;
        if (const auto member = record.FindMember("name")) {
            name = ReadText(*member);
        }
        project_.Execute(EditFrom(project_, record.Member("edit")),
                         undoable ? UndoMode::kAsUndoStep : UndoMode::kWithoutUndoStep,
                         zelcore::View(name));
        if (undoable) {
            olderUndone_ = 0;
        }
    }

    void Undo(const JsonReader& record) {
        if (history_.CanUndo()) {
            history_.Undo();
        } else if (ApplyStepDescription(project_, record.Member("revert"))) {
            ++olderUndone_;
        }
    }

    // A step undone before the journal began is older too: the recovered
    // history has nothing to redo then.
    void Redo(const JsonReader& record) {
        if (olderUndone_ == 0 && history_.CanRedo()) {
            history_.Redo();
            return;
        }
        ApplyStepDescription(project_, record.Member("apply"));
        if (olderUndone_ > 0) {
            --olderUndone_;
        }
    }

    Project& project_;
    IUndoHistory& history_;
    // Steps older than the journal that it records as undone and not redone.
    std::size_t olderUndone_ = 0;
};

} // namespace

ReplayResult ReplayJournal(const KSL::InterfaceRef<IProject>& project,
                           const JournalReading& journal) {
    Project* model = ImplementationOf<Project>(project);
    if (!model) {
        throw KSL::Exception("replaying a journal needs a project of this platform");
    }
    ReplayResult result;
    Replay replay(*model);
    for (const std::string& payload : journal.records) {
        try {
            replay.Record(payload);
        } catch (const JsonValueError& error) {
            result.problem = "record " + std::to_string(result.appliedRecords + 1) + ": " +
                             (error.GetPath().empty() ? "" : error.GetPath() + ": ") + error.what();
            break;
        } catch (const KSL::Exception& error) {
            result.problem =
                "record " + std::to_string(result.appliedRecords + 1) + ": " + error.what();
            break;
        }
        ++result.appliedRecords;
    }
    replay.Finish();
    return result;
}

} // namespace BE
