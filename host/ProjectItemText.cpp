#include "ProjectItemText.h"

#include "BE/ICaptioningStream.h"
#include "QtText.h"
#include "zelcaptioning/StreamFormat.h"

namespace host {

QString ProjectItemText(const BE::IProjectItem& item) {
    if (item.GetItemKind() != BE::ProjectItemKind::kCaptioningStream) {
        return ToQString(item.GetName());
    }
    const auto* stream = static_cast<const BE::ICaptioningStream*>(
        item.QueryInterface(BE::ICaptioningStream::kInterfaceID));
    if (!stream) {
        return {};
    }
    const std::size_t count = stream->GetCaptionCount();
    const QString countText =
        count == 1 ? Localized("$$$/Corvala/Host/Project/OneCaption=1 caption")
                   : Localized("$$$/Corvala/Host/Project/CaptionCount=%1 captions").arg(count);
    return QStringLiteral("%1 (%2)").arg(
        ToQString(zelcaptioning::GetFullStreamFormatLabel(stream->GetStreamFormat())), countText);
}

} // namespace host
