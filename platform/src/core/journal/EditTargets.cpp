#include "EditTargets.h"

#include "KSL/Exception.h"
#include "file/CaptionJson.h"
#include "file/EnumNames.h"
#include "file/JsonText.h"
#include "file/JsonValues.h"

#include <QJsonDocument>

#include <algorithm>

namespace platform::core {
namespace {

template <typename T>
std::size_t IndexIn(const std::vector<KSL::InterfaceRef<T>>& items, const T* item,
                    const char* what) {
    const auto found = std::find_if(items.begin(), items.end(), [item](const auto& candidate) {
        return candidate.Get() == item;
    });
    if (found == items.end()) {
        throw KSL::Exception(std::string("the ") + what + " is not part of a project");
    }
    return static_cast<std::size_t>(found - items.begin());
}

const Bin& OwningBin(const Bin* bin, const char* what) {
    if (!bin || !bin->GetProject()) {
        throw KSL::Exception(std::string("the ") + what + " is not part of a project");
    }
    return *bin;
}

std::size_t IndexMember(const JsonReader& description, const char* key, std::size_t count) {
    const JsonReader member = description.Member(key);
    const std::int64_t index = member.Integer(0, kLargestExactJsonInteger);
    if (static_cast<std::uint64_t>(index) >= count) {
        member.Fail("no such item: the index is " + std::to_string(index) + " of " +
                    std::to_string(count));
    }
    return static_cast<std::size_t>(index);
}

} // namespace

EditDescription::EditDescription(std::string_view kind) {
    text_ = "{\"kind\":";
    AppendJsonString(kind, text_);
}

void EditDescription::Key(std::string_view key) {
    text_ += ',';
    AppendJsonString(key, text_);
    text_ += ':';
}

EditDescription& EditDescription::Index(std::string_view key, std::size_t index) {
    Key(key);
    AppendJsonInteger(static_cast<std::int64_t>(index), text_);
    return *this;
}

EditDescription& EditDescription::Text(std::string_view key, std::u16string_view text) {
    Key(key);
    AppendJsonString(text, text_);
    return *this;
}

EditDescription& EditDescription::Name(std::string_view key, std::string_view asciiName) {
    Key(key);
    AppendJsonString(asciiName, text_);
    return *this;
}

EditDescription& EditDescription::Json(std::string_view key, std::string_view json) {
    Key(key);
    text_ += json;
    return *this;
}

EditDescription& EditDescription::Object(std::string_view key, const QJsonObject& object) {
    return Json(key, QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString());
}

EditDescription& EditDescription::Caption(std::string_view key,
                                          const zelcaptioning::Caption& caption) {
    Key(key);
    AppendCaptionJson(
        caption, [&] { return std::string(key); }, text_);
    return *this;
}

EditDescription& EditDescription::Captions(std::string_view key, const CaptioningStream& stream) {
    Key(key);
    text_ += '[';
    const std::vector<CaptioningStream::Entry>& entries = stream.GetEntries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i > 0) {
            text_ += ',';
        }
        AppendCaptionJson(
            *entries[i].caption, [&] { return std::string(key) + "[" + std::to_string(i) + "]"; },
            text_);
    }
    text_ += ']';
    return *this;
}

EditDescription& EditDescription::Streams(std::string_view key, const MasterClip& clip) {
    Key(key);
    text_ += '[';
    for (std::size_t i = 0; i < clip.GetCaptioningStreamCount(); ++i) {
        if (i > 0) {
            text_ += ',';
        }
        const auto* stream = ImplementationOf<CaptioningStream>(clip.GetCaptioningStream(i));
        const std::optional<std::string_view> format = NameOf(stream->GetStreamFormat());
        if (!format) {
            throw JsonValueError(std::string(key) + "[" + std::to_string(i) + "].format",
                                 "the stream's format has no name in project files");
        }
        text_ += "{\"format\":";
        AppendJsonString(*format, text_);
        Captions("captions", *stream);
        text_ += '}';
    }
    text_ += ']';
    return *this;
}

std::string EditDescription::Finish() && {
    text_ += '}';
    return std::move(text_);
}

EditDescription& AddPlace(const Bin& bin, EditDescription& description) {
    const Project* project = OwningBin(&bin, "bin").GetProject();
    return description.Index("bin", IndexIn(project->GetBins(), &bin, "bin"));
}

EditDescription& AddPlace(const MasterClip& clip, EditDescription& description) {
    const Bin& bin = OwningBin(clip.GetOwner(), "master clip");
    return AddPlace(bin, description).Index("clip", IndexIn(bin.GetClips(), &clip, "master clip"));
}

EditDescription& AddPlace(const Sequence& sequence, EditDescription& description) {
    const Bin& bin = OwningBin(sequence.GetOwner(), "sequence");
    return AddPlace(bin, description)
        .Index("sequence", IndexIn(bin.GetSequences(), &sequence, "sequence"));
}

EditDescription& AddPlace(const CaptioningStream& stream, EditDescription& description) {
    if (!stream.GetOwner()) {
        throw KSL::Exception("the caption stream is not part of a project");
    }
    const std::optional<std::string_view> format = NameOf(stream.GetStreamFormat());
    if (!format) {
        throw JsonValueError("format", "the stream's format has no name in project files");
    }
    return AddPlace(*stream.GetOwner(), description).Name("format", *format);
}

std::size_t CaptionIndex(const CaptioningStream& stream, const zelcaptioning::Caption& caption) {
    const auto index = stream.FindCaptionIndex(&caption);
    if (!index) {
        throw KSL::Exception("the caption is not part of its caption stream");
    }
    return *index;
}

KSL::InterfaceRef<Bin> BinAt(Project& project, const JsonReader& description) {
    return project.GetBins()[IndexMember(description, "bin", project.GetBins().size())];
}

KSL::InterfaceRef<MasterClip> ClipAt(Project& project, const JsonReader& description) {
    const KSL::InterfaceRef<Bin> bin = BinAt(project, description);
    return bin->GetClips()[IndexMember(description, "clip", bin->GetClips().size())];
}

KSL::InterfaceRef<Sequence> SequenceAt(Project& project, const JsonReader& description) {
    const KSL::InterfaceRef<Bin> bin = BinAt(project, description);
    return bin->GetSequences()[IndexMember(description, "sequence", bin->GetSequences().size())];
}

KSL::InterfaceRef<CaptioningStream> StreamAt(Project& project, const JsonReader& description) {
    const KSL::InterfaceRef<MasterClip> clip = ClipAt(project, description);
    const JsonReader format = description.Member("format");
    const KSL::InterfaceRef<BE::ICaptioningStream> stream =
        clip->FindCaptioningStream(ReadNamed(format, &StreamFormatNamed));
    if (!stream) {
        format.Fail("the master clip has no caption stream of this format");
    }
    return KSL::InterfaceRef<CaptioningStream>(ImplementationOf<CaptioningStream>(stream));
}

std::size_t InsertionIndex(const JsonReader& description, const char* key, std::size_t count,
                           std::optional<std::size_t> absent) {
    if (absent && !description.FindMember(key)) {
        return *absent;
    }
    return IndexMember(description, key, count + 1);
}

boost::intrusive_ptr<zelcaptioning::Caption> CaptionAt(const CaptioningStream& stream,
                                                       const JsonReader& description) {
    return stream.GetEntries()[IndexMember(description, "index", stream.GetEntries().size())]
        .caption;
}

} // namespace platform::core
