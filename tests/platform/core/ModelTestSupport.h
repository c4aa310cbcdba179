#pragma once

#include "BE/CaptionMessages.h"
#include "BE/IProject.h"
#include "KSL/Listener.h"
#include "KSL/Message.h"
#include "zelcaptioning/Caption.h"
#include "zelmediatypes/TickTime.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace platform_test {

zelmediatypes::TickTime Ticks(std::int64_t ticks);
// Whole and fractional seconds, exact for multiples of a millisecond.
zelmediatypes::TickTime Seconds(double seconds);

// A caption of one paragraph per line of text, one span per paragraph.
boost::intrusive_ptr<zelcaptioning::Caption>
MakeCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end, const std::string& text);

// The plain text of a caption, paragraphs joined by "\n", as UTF-8.
std::string TextOf(const zelcaptioning::Caption& caption);

// A project with one bin holding one 1920x1080 29.97 fps test clip.
struct ClipFixture {
    KSL::InterfaceRef<BE::IProject> project;
    KSL::InterfaceRef<BE::IBin> bin;
    KSL::InterfaceRef<BE::IMasterClip> clip;
};
ClipFixture MakeClipFixture();
BE::MasterClipSettings TestClipSettings(const char* name);

// Records the caption changes announced on one stream's station, as lines
// "added|changed|removed <text> @<old begin ticks>" and "moved <text> <old>-><new>".
class CaptionChangeRecorder : public KSL::Listener {
public:
    explicit CaptionChangeRecorder(const KSL::InterfaceRef<BE::ICaptioningStream>& stream);
    std::vector<std::string> lines;

protected:
    bool HandleMessage(const KSL::Message& message) override;
};

} // namespace platform_test
