#include "ProjectJson.h"

#include "CaptionJson.h"
#include "JsonText.h"
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

// The project's text, written as it is walked: the layout of AppendLaidOut,
// with each caption streamed onto its line by AppendCaptionJson rather than
// built as a QJsonObject first, which is what makes saving a large stream
// quick. Members come in ascending key order, as QJsonObject keeps them.
class ProjectTextWriter {
public:
    std::string Project(const BE::IProject& project) {
        out_ += "{\n";
        Key(1, "bins");
        Array(1, project.GetBinCount(), [&](int depth, std::size_t i) {
            Bin(depth, *project.GetBin(i), "bins[" + std::to_string(i) + "]");
        });
        out_ += ",\n";
        Key(1, "format");
        AppendJsonString(std::string_view(kFormatMarker), out_);
        out_ += ",\n";
        Key(1, "version");
        AppendJsonInteger(kProjectFormatVersion, out_);
        out_ += "\n}\n";
        return std::move(out_);
    }

private:
    void Indent(int depth) { out_.append(static_cast<std::size_t>(depth) * 4, ' '); }

    void Key(int depth, const char* key) {
        Indent(depth);
        AppendJsonString(std::string_view(key), out_);
        out_ += ": ";
    }

    // An array laid out one element a line; "[]" when empty.
    template <typename WriteElement>
    void Array(int depth, std::size_t count, const WriteElement& writeElement) {
        if (count == 0) {
            out_ += "[]";
            return;
        }
        out_ += "[\n";
        for (std::size_t i = 0; i < count; ++i) {
            Indent(depth + 1);
            writeElement(depth + 1, i);
            out_ += i + 1 == count ? "\n" : ",\n";
        }
        Indent(depth);
        out_ += ']';
    }

    // The object's members laid out, each followed by ",\n" when more follow.
    void Members(int depth, const QJsonObject& object, bool moreFollow) {
        for (auto member = object.begin(); member != object.end(); ++member) {
            QByteArray text;
            AppendIndent(depth, text);
            AppendCompact(member.key(), text);
            text += ": ";
            AppendLaidOut(member.value(), depth, false, text);
            out_.append(text.constData(), static_cast<std::size_t>(text.size()));
            out_ += std::next(member) == object.end() && !moreFollow ? "\n" : ",\n";
        }
    }

    void Bin(int depth, const BE::IBin& bin, const std::string& path) {
        out_ += "{\n";
        Key(depth + 1, "clips");
        Array(depth + 1, bin.GetMasterClipCount(), [&](int d, std::size_t i) {
            Clip(d, *bin.GetMasterClip(i), Indexed(path, "clips", i));
        });
        out_ += ",\n";
        Key(depth + 1, "name");
        AppendJsonString(zelcore::View(bin.GetName()), out_);
        out_ += ",\n";
        Key(depth + 1, "sequences");
        Array(depth + 1, bin.GetSequenceCount(), [&](int d, std::size_t i) {
            QJsonObject sequence;
            WriteSequenceSettings(bin.GetSequence(i)->GetSettings(), Indexed(path, "sequences", i),
                                  sequence);
            QByteArray text;
            AppendLaidOut(sequence, d, false, text);
            out_.append(text.constData(), static_cast<std::size_t>(text.size()));
        });
        out_ += '\n';
        Indent(depth);
        out_ += '}';
    }

    // "streams" follows every settings member in key order.
    void Clip(int depth, const BE::IMasterClip& clip, const std::string& path) {
        QJsonObject settings;
        WriteClipSettings(clip.GetSettings(), path, settings);
        out_ += "{\n";
        Members(depth + 1, settings, true);
        Key(depth + 1, "streams");
        Array(depth + 1, clip.GetCaptioningStreamCount(), [&](int d, std::size_t i) {
            Stream(d, *clip.GetCaptioningStream(i), Indexed(path, "streams", i));
        });
        out_ += '\n';
        Indent(depth);
        out_ += '}';
    }

    void Stream(int depth, const BE::ICaptioningStream& stream, const std::string& path) {
        out_ += "{\n";
        Key(depth + 1, "captions");
        Array(depth + 1, stream.GetCaptionCount(), [&](int, std::size_t i) {
            AppendCaptionJson(
                *stream.GetCaption(i), [&] { return Indexed(path, "captions", i); }, out_);
        });
        out_ += ",\n";
        Key(depth + 1, "format");
        const std::optional<std::string_view> name = NameOf(stream.GetStreamFormat());
        if (!name) {
            throw JsonValueError(path + ".format", "value " +
                                                       std::to_string(stream.GetStreamFormat()) +
                                                       " has no name in project files");
        }
        AppendJsonString(*name, out_);
        out_ += '\n';
        Indent(depth);
        out_ += '}';
    }

    std::string out_;
};

KSL::InterfaceRef<CaptioningStream> StreamFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<CaptioningStream> stream(
        new CaptioningStream(ReadNamed(reader.Member("format"), &StreamFormatNamed)));
    reader.Member("captions").ForEachElement([&](const JsonReader& captionReader, std::size_t i) {
        zelcaptioning::CaptionPtr caption = CaptionFromJson(captionReader);
        if (i > 0 && caption->GetBeginTime() < stream->GetEntries().back().beginTime) {
            captionReader.Member("begin").Fail("begins before the caption before it");
        }
        stream->Insert(std::move(caption), stream->NextArrival());
    });
    return stream;
}

KSL::InterfaceRef<MasterClip> ClipFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<MasterClip> clip(new MasterClip(ReadClipSettings(reader)));
    reader.Member("streams").ForEachElement([&](const JsonReader& streamReader, std::size_t) {
        KSL::InterfaceRef<CaptioningStream> stream = StreamFromJson(streamReader);
        if (clip->FindCaptioningStream(stream->GetStreamFormat())) {
            streamReader.Member("format").Fail("the clip has a stream of this format already");
        }
        clip->AttachStream(std::move(stream));
    });
    return clip;
}

KSL::InterfaceRef<Bin> BinFromJson(const JsonReader& reader) {
    KSL::InterfaceRef<Bin> bin(new Bin(ReadText(reader.Member("name"))));
    reader.Member("clips").ForEachElement(
        [&](const JsonReader& clip, std::size_t i) { bin->InsertClip(i, ClipFromJson(clip)); });
    reader.Member("sequences").ForEachElement([&](const JsonReader& sequence, std::size_t i) {
        bin->InsertSequence(
            i, KSL::InterfaceRef<Sequence>(new Sequence(ReadSequenceSettings(sequence))));
    });
    return bin;
}

} // namespace

std::string ProjectJsonText(const BE::IProject& project) {
    return ProjectTextWriter().Project(project);
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
    root.Member("bins").ForEachElement(
        [&](const JsonReader& bin, std::size_t i) { project->InsertBin(i, BinFromJson(bin)); });
    return project;
}

} // namespace platform::core
