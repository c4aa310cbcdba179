#include "ProjectJson.h"

#include "CaptionJson.h"
#include "JsonValues.h"
#include "SettingsJson.h"
#include "model/Project.h"

#include <QByteArrayView>
#include <QJsonArray>
#include <QJsonDocument>

#include <iterator>
#include <limits>
#include <string>

namespace platform::core {
namespace {

constexpr const char* kFormatMarker = "corvala-project";

// The value on one line without spaces, as QJsonDocument writes compactly.
void AppendCompact(const QJsonValue& value, QByteArray& text) {
    if (value.isObject()) {
        text += QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
    } else if (value.isArray()) {
        text += QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    } else {
        // A document holds only objects and arrays: write a one-element array and unwrap it.
        const QByteArray wrapped = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        text += QByteArrayView(wrapped).sliced(1, wrapped.size() - 2);
    }
}

void AppendIndent(int depth, QByteArray& text) {
    text.append(static_cast<qsizetype>(depth) * 4, ' ');
}

void AppendLaidOut(const QJsonValue& value, int depth, bool elementsOnOneLine, QByteArray& text) {
    if (value.isObject() && !value.toObject().isEmpty()) {
        const QJsonObject object = value.toObject();
        text += "{\n";
        for (auto member = object.begin(); member != object.end(); ++member) {
            AppendIndent(depth + 1, text);
            AppendCompact(member.key(), text);
            text += ": ";
            AppendLaidOut(member.value(), depth + 1, member.key() == u"captions", text);
            text += std::next(member) == object.end() ? "\n" : ",\n";
        }
        AppendIndent(depth, text);
        text += '}';
    } else if (value.isArray() && !value.toArray().isEmpty()) {
        const QJsonArray array = value.toArray();
        text += "[\n";
        for (qsizetype i = 0; i < array.size(); ++i) {
            AppendIndent(depth + 1, text);
            if (elementsOnOneLine) {
                AppendCompact(array.at(i), text);
            } else {
                AppendLaidOut(array.at(i), depth + 1, false, text);
            }
            text += i + 1 == array.size() ? "\n" : ",\n";
        }
        AppendIndent(depth, text);
        text += ']';
    } else {
        AppendCompact(value, text);
    }
}

std::string Indexed(const std::string& path, const char* member, std::size_t index) {
    return path + "." + member + "[" + std::to_string(index) + "]";
}

QJsonObject StreamToJson(const BE::ICaptioningStream& stream, const std::string& path) {
    QJsonArray captions;
    for (std::size_t i = 0, count = stream.GetCaptionCount(); i < count; ++i) {
        captions.append(CaptionToJson(*stream.GetCaption(i), Indexed(path, "captions", i)));
    }
    return QJsonObject{{"format", NameToJson(stream.GetStreamFormat(), path + ".format")},
                       {"captions", captions}};
}

QJsonObject ClipToJson(const BE::IMasterClip& clip, const std::string& path) {
    QJsonObject object;
    WriteClipSettings(clip.GetSettings(), path, object);
    QJsonArray streams;
    for (std::size_t i = 0, count = clip.GetCaptioningStreamCount(); i < count; ++i) {
        streams.append(StreamToJson(*clip.GetCaptioningStream(i), Indexed(path, "streams", i)));
    }
    object.insert("streams", streams);
    return object;
}

QJsonObject BinToJson(const BE::IBin& bin, const std::string& path) {
    QJsonArray clips;
    for (std::size_t i = 0, count = bin.GetMasterClipCount(); i < count; ++i) {
        clips.append(ClipToJson(*bin.GetMasterClip(i), Indexed(path, "clips", i)));
    }
    QJsonArray sequences;
    for (std::size_t i = 0, count = bin.GetSequenceCount(); i < count; ++i) {
        QJsonObject sequence;
        WriteSequenceSettings(bin.GetSequence(i)->GetSettings(), Indexed(path, "sequences", i),
                              sequence);
        sequences.append(sequence);
    }
    return QJsonObject{
        {"name", ToQString(bin.GetName())}, {"clips", clips}, {"sequences", sequences}};
}

KSL::InterfaceRef<CaptioningStream> StreamFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<CaptioningStream> stream(
        new CaptioningStream(ReadNamed(reader.Member("format"), &StreamFormatNamed)));
    const JsonReader captions = reader.Member("captions");
    for (std::size_t i = 0, count = captions.ArraySize(); i < count; ++i) {
        const JsonReader captionReader = captions.Element(i);
        zelcaptioning::CaptionPtr caption = CaptionFromJson(captionReader);
        if (i > 0 && caption->GetBeginTime() < stream->GetEntries().back().beginTime) {
            captionReader.Member("begin").Fail("begins before the caption before it");
        }
        stream->Insert(std::move(caption), stream->NextArrival());
    }
    return stream;
}

KSL::InterfaceRef<MasterClip> ClipFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<MasterClip> clip(new MasterClip(ReadClipSettings(reader)));
    const JsonReader streams = reader.Member("streams");
    for (std::size_t i = 0, count = streams.ArraySize(); i < count; ++i) {
        const JsonReader streamReader = streams.Element(i);
        KSL::InterfaceRef<CaptioningStream> stream = StreamFromJson(streamReader);
        if (clip->FindCaptioningStream(stream->GetStreamFormat())) {
            streamReader.Member("format").Fail("the clip has a stream of this format already");
        }
        clip->AttachStream(std::move(stream));
    }
    return clip;
}

KSL::InterfaceRef<Bin> BinFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<Bin> bin(new Bin(ReadText(reader.Member("name"))));
    const JsonReader clips = reader.Member("clips");
    for (std::size_t i = 0, count = clips.ArraySize(); i < count; ++i) {
        bin->InsertClip(i, ClipFromJson(clips.Element(i)));
    }
    const JsonReader sequences = reader.Member("sequences");
    for (std::size_t i = 0, count = sequences.ArraySize(); i < count; ++i) {
        bin->InsertSequence(i, KSL::InterfaceRef<Sequence>(
                                   new Sequence(ReadSequenceSettings(sequences.Element(i)))));
    }
    return bin;
}

} // namespace

QJsonObject ProjectToJson(const BE::IProject& project) {
    QJsonArray bins;
    for (std::size_t i = 0, count = project.GetBinCount(); i < count; ++i) {
        bins.append(BinToJson(*project.GetBin(i), "bins[" + std::to_string(i) + "]"));
    }
    return QJsonObject{
        {"format", kFormatMarker}, {"version", kProjectFormatVersion}, {"bins", bins}};
}

QByteArray ProjectJsonText(const QJsonObject& root) {
    QByteArray text;
    AppendLaidOut(root, 0, false, text);
    text += '\n';
    return text;
}

KSL::InterfaceRef<Project> ProjectFromJson(const JsonReader& root) {
    if (root.Member("format").String() != kFormatMarker) {
        root.Member("format").Fail(std::string("expected \"") + kFormatMarker + "\"");
    }
    const std::int64_t version = root.Member("version").Integer(1, std::numeric_limits<int>::max());
    if (version > kProjectFormatVersion) {
        root.Member("version").Fail("version " + std::to_string(version) +
                                    " is newer than this build reads (" +
                                    std::to_string(kProjectFormatVersion) + ")");
    }
    KSL::InterfaceRef<Project> project(new Project);
    const JsonReader bins = root.Member("bins");
    for (std::size_t i = 0, count = bins.ArraySize(); i < count; ++i) {
        project->InsertBin(i, BinFromJson(bins.Element(i)));
    }
    return project;
}

} // namespace platform::core
