#include "FfmpegCea608.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace test {

namespace {

// "...,,{\an7}{\pos(38,228)}Hi\Nthere" (an ASS dialogue event) to {"Hi", "there"}.
std::vector<std::string> LinesOfDialogue(const std::string& dialogue) {
    std::size_t start = 0;
    for (int field = 0; field < 8 && start != std::string::npos; ++field) {
        start = dialogue.find(',', start);
        start = start == std::string::npos ? start : start + 1;
    }
    const std::string text = start == std::string::npos ? dialogue : dialogue.substr(start);
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{') {
            i = text.find('}', i);
            if (i == std::string::npos) {
                break;
            }
        } else if (text[i] == '\\' && i + 1 < text.size()) {
            const char escaped = text[++i];
            if (escaped == 'N' || escaped == 'n') {
                lines.emplace_back();
            } else {
                lines.back() += escaped == 'h' ? ' ' : escaped;
            }
        } else {
            lines.back() += text[i];
        }
    }
    return lines;
}

// Frames since midnight at 29.97 fps of an SCC time code.
std::int64_t FrameOfTimecode(const std::string& label) {
    int hours = 0, minutes = 0, seconds = 0, frames = 0;
    std::sscanf(label.c_str(), "%d:%d:%d%*c%d", &hours, &minutes, &seconds, &frames);
    const std::int64_t totalMinutes = hours * 60LL + minutes;
    std::int64_t frame = (totalMinutes * 60 + seconds) * 30 + frames;
    if (label.size() > 8 && label[8] == ';') {
        frame -= 2 * (totalMinutes - totalMinutes / 10);
    }
    return frame;
}

} // namespace

std::vector<std::vector<std::string>> DecodeSccWithFfmpeg(const std::string& sccText) {
    const AVCodec* codec = avcodec_find_decoder(AV_CODEC_ID_EIA_608);
    std::unique_ptr<AVCodecContext, void (*)(AVCodecContext*)> context(
        avcodec_alloc_context3(codec), [](AVCodecContext* c) { avcodec_free_context(&c); });
    context->pkt_timebase = AVRational{1001, 30000};
    if (avcodec_open2(context.get(), codec, nullptr) < 0) {
        throw std::runtime_error("FFmpeg's EIA-608 decoder does not open");
    }
    std::unique_ptr<AVPacket, void (*)(AVPacket*)> packet(av_packet_alloc(),
                                                          [](AVPacket* p) { av_packet_free(&p); });
    std::vector<std::vector<std::string>> captions;
    std::istringstream lines(sccText);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.size() < 12 || line[2] != ':') {
            continue;
        }
        std::int64_t frame = FrameOfTimecode(line.substr(0, 11));
        std::istringstream words(line.substr(12));
        std::string word;
        while (words >> word) {
            const auto value = static_cast<unsigned>(std::stoul(word, nullptr, 16));
            // A cc_data triplet: field 1, valid, then the byte pair.
            const std::uint8_t triplet[3] = {0xFC, static_cast<std::uint8_t>(value >> 8),
                                             static_cast<std::uint8_t>(value & 0xFF)};
            av_new_packet(packet.get(), 3);
            std::memcpy(packet->data, triplet, 3);
            packet->pts = packet->dts = frame++;
            packet->duration = 1;
            AVSubtitle subtitle;
            int gotSubtitle = 0;
            avcodec_decode_subtitle2(context.get(), &subtitle, &gotSubtitle, packet.get());
            if (gotSubtitle) {
                for (unsigned r = 0; r < subtitle.num_rects; ++r) {
                    if (subtitle.rects[r]->ass != nullptr) {
                        captions.push_back(LinesOfDialogue(subtitle.rects[r]->ass));
                    }
                }
                avsubtitle_free(&subtitle);
            }
            av_packet_unref(packet.get());
        }
    }
    return captions;
}

} // namespace test
