#include "FFmpegHandles.h"

#include "MediaError.h"

namespace platform::media {

FormatContextPtr OpenMediaInput(const std::string& pathUtf8) {
    const auto fail = [&](const std::string& problem) {
        throw MediaError("Media file '" + pathUtf8 + "' " + problem);
    };
    AVFormatContext* opened = nullptr;
    int result = avformat_open_input(&opened, pathUtf8.c_str(), nullptr, nullptr);
    if (result < 0) {
        fail("cannot be opened: " + DescribeAVError(result));
    }
    FormatContextPtr context(opened);
    result = avformat_find_stream_info(opened, nullptr);
    if (result < 0) {
        fail("has no readable stream information: " + DescribeAVError(result));
    }
    return context;
}

} // namespace platform::media
