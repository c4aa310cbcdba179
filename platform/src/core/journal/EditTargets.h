#pragma once

#include "file/JsonReader.h"
#include "model/Bin.h"
#include "model/CaptioningStream.h"
#include "model/MasterClip.h"
#include "model/Project.h"
#include "model/Sequence.h"

#include <QJsonObject>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform::core {

// An edit's description for the journal, written as compact JSON text as it
// is put together: a keystroke's description is written on every keystroke.
class EditDescription {
public:
    explicit EditDescription(std::string_view kind);

    EditDescription& Index(std::string_view key, std::size_t index);
    EditDescription& Text(std::string_view key, std::u16string_view text);
    EditDescription& Name(std::string_view key, std::string_view asciiName);
    // A member whose value is JSON text already.
    EditDescription& Json(std::string_view key, std::string_view json);
    EditDescription& Object(std::string_view key, const QJsonObject& object);
    // The caption's JSON as a project file holds it.
    EditDescription& Caption(std::string_view key, const zelcaptioning::Caption& caption);
    // The stream's captions in its order, as an array of caption objects.
    EditDescription& Captions(std::string_view key, const CaptioningStream& stream);
    // The clip's streams, each an object of its "format" and "captions".
    EditDescription& Streams(std::string_view key, const MasterClip& clip);

    std::string Finish() &&;

private:
    void Key(std::string_view key);
    std::string text_;
};

// The journal names a model object by its place in the project (see
// platform/PROJECT_FORMAT.md): bins and the clips and sequences of a bin by
// index, a clip's stream by format, a stream's caption by index. Replaying
// the journal's changes in order on the project they started from finds every
// object where it was when the change was recorded.
//
// The writers add the members naming an object that is part of a project,
// and throw KSL::Exception for one that is not.
EditDescription& AddPlace(const Bin& bin, EditDescription& description);
EditDescription& AddPlace(const MasterClip& clip, EditDescription& description);
EditDescription& AddPlace(const Sequence& sequence, EditDescription& description);
EditDescription& AddPlace(const CaptioningStream& stream, EditDescription& description);
std::size_t CaptionIndex(const CaptioningStream& stream, const zelcaptioning::Caption& caption);

// The readers find the object at the place the description's members name,
// and throw JsonValueError naming the member whose object is not there.
KSL::InterfaceRef<Bin> BinAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<MasterClip> ClipAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<Sequence> SequenceAt(Project& project, const JsonReader& description);
KSL::InterfaceRef<CaptioningStream> StreamAt(Project& project, const JsonReader& description);
// The place among count items that the member names for an item to be
// inserted at (count for after the last); absent when there is no member,
// which is then an error if absent is null.
std::size_t InsertionIndex(const JsonReader& description, const char* key, std::size_t count,
                           std::optional<std::size_t> absent);
boost::intrusive_ptr<zelcaptioning::Caption> CaptionAt(const CaptioningStream& stream,
                                                       const JsonReader& description);

} // namespace platform::core
