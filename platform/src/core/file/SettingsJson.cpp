#include "SettingsJson.h"

#include "JsonNumbers.h"
#include "JsonValues.h"

#include <QJsonArray>

#include <cstdint>
#include <limits>
#include <optional>

namespace platform::core {
namespace {

constexpr std::int64_t kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kInt32Max = std::numeric_limits<std::int32_t>::max();

QJsonObject RectToJson(const zelcore::geom::RectT<int>& rect) {
    return QJsonObject{
        {"left", rect.left}, {"top", rect.top}, {"right", rect.right}, {"bottom", rect.bottom}};
}

zelcore::geom::RectT<int> RectFromJson(const JsonReader& reader) {
    const auto edge = [&reader](const char* name) {
        return static_cast<int>(reader.Member(name).Integer(kInt32Min, kInt32Max));
    };
    return {edge("left"), edge("top"), edge("right"), edge("bottom")};
}

QString FrameRateToJson(const zelmediatypes::FrameRate& rate) {
    return QString::fromStdString(
        RationalToString({rate.FramesPerSecondNumerator(), rate.FramesPerSecondDenominator()}));
}

zelmediatypes::FrameRate FrameRateFromJson(const JsonReader& reader) {
    const boost::rational<std::int64_t> fps = reader.RationalString();
    const auto rate =
        zelmediatypes::FrameRate::FromFramesPerSecond(fps.numerator(), fps.denominator());
    if (!rate) {
        reader.Fail("not a frame rate: it must be positive and a frame must last whole ticks");
    }
    return *rate;
}

QString AspectRatioToJson(const zelmediatypes::PixelAspectRatio& ratio) {
    return QString::fromStdString(RationalToString({ratio.Numerator(), ratio.Denominator()}));
}

zelmediatypes::PixelAspectRatio AspectRatioFromJson(const JsonReader& reader) {
    const boost::rational<std::int64_t> ratio = reader.RationalString();
    if (ratio.numerator() <= 0 || ratio.numerator() > kInt32Max ||
        ratio.denominator() > kInt32Max) {
        reader.Fail("a pixel aspect ratio needs positive 32-bit terms");
    }
    return zelmediatypes::PixelAspectRatio(static_cast<std::int32_t>(ratio.numerator()),
                                           static_cast<std::int32_t>(ratio.denominator()));
}

QString TicksToJson(const zelmediatypes::TickTime& time) {
    return QString::fromStdString(Int64ToString(time.GetTicks()));
}

// Time displays are stored by their number, which stays fixed forever; a number
// this build does not know is kept as it is.
zelmediatypes::TimeDisplay TimeDisplayFromJson(const JsonReader& reader) {
    return static_cast<zelmediatypes::TimeDisplay>(reader.Integer(kInt32Min, kInt32Max));
}

} // namespace

void WriteClipSettings(const BE::MasterClipSettings& settings, const std::string& path,
                       QJsonObject& object) {
    object.insert("name", ToQString(settings.name));
    object.insert("kind", NameToJson(settings.kind, path + ".kind"));
    object.insert("media",
                  QJsonObject{{"kind", NameToJson(settings.media.kind, path + ".media.kind")},
                              {"path", QString::fromStdString(settings.media.filePathUtf8)}});
    object.insert("frameRect", RectToJson(settings.frameRect));
    object.insert("frameRate", FrameRateToJson(settings.frameRate));
    object.insert("pixelAspectRatio", AspectRatioToJson(settings.pixelAspectRatio));
    object.insert("duration", TicksToJson(settings.duration));
    if (settings.videoTimeDisplay != zelmediatypes::kTimeDisplay_Unknown) {
        object.insert("videoTimeDisplay", static_cast<int>(settings.videoTimeDisplay));
    }
}

BE::MasterClipSettings ReadClipSettings(const JsonReader& reader) {
    BE::MasterClipSettings settings;
    settings.name = ReadText(reader.Member("name"));
    settings.kind = ReadNamed(reader.Member("kind"), &MasterClipKindNamed);
    const JsonReader media = reader.Member("media");
    settings.media.kind = ReadNamed(media.Member("kind"), &MediaSourceKindNamed);
    settings.media.filePathUtf8 = media.Member("path").String();
    if (settings.media.kind == BE::MediaSource::Kind::kGeneratedTestSource &&
        !settings.media.filePathUtf8.empty()) {
        media.Member("path").Fail("a generated test source has no file path");
    }
    settings.frameRect = RectFromJson(reader.Member("frameRect"));
    settings.frameRate = FrameRateFromJson(reader.Member("frameRate"));
    settings.pixelAspectRatio = AspectRatioFromJson(reader.Member("pixelAspectRatio"));
    settings.duration = zelmediatypes::TickTime(reader.Member("duration").Int64String());
    if (const std::optional<JsonReader> display = reader.FindMember("videoTimeDisplay")) {
        settings.videoTimeDisplay = TimeDisplayFromJson(*display);
    }
    return settings;
}

void WriteSequenceSettings(const BE::SequenceSettings& settings, const std::string& path,
                           QJsonObject& object) {
    object.insert("name", ToQString(settings.name));
    object.insert("frameRect", RectToJson(settings.frameRect));
    object.insert("frameRate", FrameRateToJson(settings.frameRate));
    object.insert("videoTimeDisplay", static_cast<int>(settings.videoTimeDisplay));
    object.insert("audioTimeDisplay", static_cast<int>(settings.audioTimeDisplay));
    object.insert("frameAlignment", NameToJson(settings.frameAlignment, path + ".frameAlignment"));
}

BE::SequenceSettings ReadSequenceSettings(const JsonReader& reader) {
    BE::SequenceSettings settings;
    settings.name = ReadText(reader.Member("name"));
    settings.frameRect = RectFromJson(reader.Member("frameRect"));
    settings.frameRate = FrameRateFromJson(reader.Member("frameRate"));
    settings.videoTimeDisplay = TimeDisplayFromJson(reader.Member("videoTimeDisplay"));
    settings.audioTimeDisplay = TimeDisplayFromJson(reader.Member("audioTimeDisplay"));
    settings.frameAlignment = ReadNamed(reader.Member("frameAlignment"), &FrameAlignmentNamed);
    return settings;
}

} // namespace platform::core
