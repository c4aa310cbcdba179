#include "EditTargets.h"

#include "KSL/Exception.h"
#include "file/EnumNames.h"
#include "file/JsonValues.h"

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

qint64 AsJsonIndex(std::size_t index) {
    return static_cast<qint64>(index);
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

QJsonObject BinPlace(const Bin& bin) {
    const Project* project = OwningBin(&bin, "bin").GetProject();
    return {{"bin", AsJsonIndex(IndexIn(project->GetBins(), &bin, "bin"))}};
}

QJsonObject ClipPlace(const MasterClip& clip) {
    const Bin& bin = OwningBin(clip.GetOwner(), "master clip");
    QJsonObject place = BinPlace(bin);
    place.insert("clip", AsJsonIndex(IndexIn(bin.GetClips(), &clip, "master clip")));
    return place;
}

QJsonObject SequencePlace(const Sequence& sequence) {
    const Bin& bin = OwningBin(sequence.GetOwner(), "sequence");
    QJsonObject place = BinPlace(bin);
    place.insert("sequence", AsJsonIndex(IndexIn(bin.GetSequences(), &sequence, "sequence")));
    return place;
}

QJsonObject StreamPlace(const CaptioningStream& stream) {
    if (!stream.GetOwner()) {
        throw KSL::Exception("the caption stream is not part of a project");
    }
    QJsonObject place = ClipPlace(*stream.GetOwner());
    place.insert("format", NameToJson(stream.GetStreamFormat(), "format"));
    return place;
}

std::size_t CaptionIndex(const CaptioningStream& stream, const zelcaptioning::Caption& caption) {
    const auto index = stream.FindCaptionIndex(&caption);
    if (!index) {
        throw KSL::Exception("the caption is not part of its caption stream");
    }
    return *index;
}

QJsonObject Described(const char* kind, QJsonObject place) {
    place.insert("kind", QLatin1String(kind));
    return place;
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

boost::intrusive_ptr<zelcaptioning::Caption> CaptionAt(const CaptioningStream& stream,
                                                       const JsonReader& description) {
    return stream.GetEntries()[IndexMember(description, "index", stream.GetEntries().size())]
        .caption;
}

} // namespace platform::core
