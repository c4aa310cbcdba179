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

#include <cstring>

namespace BE {
namespace {

using namespace platform::core;

// The model edit a journal's edit description names, made as the model's own
// entry points make it.
std::unique_ptr<ModelEdit> EditFrom(Project& project, const JsonReader& edit) {
    const std::string kind = edit.Member("kind").String();
    if (kind == "addCaption" || kind == "removeCaption" || kind == "rippleRemoveCaption" ||
        kind == "replaceCaption") {
        const KSL::InterfaceRef<CaptioningStream> stream = StreamAt(project, edit);
        if (kind == "addCaption") {
            return std::make_unique<CaptionMembershipEdit>(
                stream, CaptionFromJson(edit.Member("caption")), Membership::kAdd);
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
    if (kind == "addBin") {
        return std::make_unique<AddBinEdit>(
            project, KSL::InterfaceRef<Bin>(new Bin(ReadText(edit.Member("name")))));
    }
    if (kind == "addClip") {
        return std::make_unique<ClipMembershipEdit>(BinAt(project, edit),
                                                    KSL::InterfaceRef<MasterClip>(new MasterClip(
                                                        ReadClipSettings(edit.Member("settings")))),
                                                    Membership::kAdd);
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
        return std::make_unique<AddSequenceEdit>(
            BinAt(project, edit), KSL::InterfaceRef<Sequence>(
                                      new Sequence(ReadSequenceSettings(edit.Member("settings")))));
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
        KSL::InterfaceRef<CaptioningStream> stream(
            new CaptioningStream(ReadNamed(edit.Member("format"), &StreamFormatNamed)));
        edit.Member("captions").ForEachElement([&](const JsonReader& caption, std::size_t) {
            stream->Insert(CaptionFromJson(caption), stream->NextArrival());
        });
        return std::make_unique<PutStreamEdit>(ClipAt(project, edit), stream);
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

void ReplayRecord(Project& project, std::string_view payload) {
    std::optional<JsonSyntaxError> syntax;
    const JsonTree tree = JsonTree::Parse(payload, syntax);
    if (syntax) {
        throw JsonValueError("byte " + std::to_string(syntax->offset), syntax->problem);
    }
    const JsonReader record(tree, "");
    const std::string op = record.Member("op").String();
    IUndoHistory& history = project.GetUndoHistory();
    if (op == "edit") {
        const bool undoable = record.Member("undo").Bool();
        zelcore::UTF16String name;
        if (const auto member = record.FindMember("name")) {
            name = ReadText(*member);
        }
        project.Execute(EditFrom(project, record.Member("edit")),
                        undoable ? UndoMode::kAsUndoStep : UndoMode::kWithoutUndoStep,
                        zelcore::View(name));
    } else if (op == "undo" || op == "redo") {
        const bool undo = op == "undo";
        if (undo ? !history.CanUndo() : !history.CanRedo()) {
            record.Member("op").Fail(undo ? "nothing to undo: the step was made before the "
                                            "journal began (before the last save)"
                                          : "nothing to redo");
        }
        undo ? history.Undo() : history.Redo();
    } else if (op == "clearHistory") {
        history.Clear();
    } else {
        record.Member("op").Fail("unknown operation \"" + op + "\"");
    }
}

} // namespace

ReplayResult ReplayJournal(const KSL::InterfaceRef<IProject>& project,
                           const JournalReading& journal) {
    Project* model = ImplementationOf<Project>(project);
    if (!model) {
        throw KSL::Exception("replaying a journal needs a project of this platform");
    }
    ReplayResult result;
    for (const std::string& payload : journal.records) {
        try {
            ReplayRecord(*model, payload);
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
    return result;
}

} // namespace BE
