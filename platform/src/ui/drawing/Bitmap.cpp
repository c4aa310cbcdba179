#include "UIF/Bitmap.h"

#include "drawing/BitmapImpl.h"

#include <map>

namespace UIF {

Bitmap Bitmap::GetBitmap(DecalID decal) {
    // Decals are drawn once per process and shared by every view.
    static std::map<DecalID, Bitmap> drawn;
    if (auto found = drawn.find(decal); found != drawn.end()) {
        return found->second;
    }
    QImage image = platform::ui::PaintDecal(decal);
    if (image.isNull()) {
        return Bitmap();
    }
    auto impl = std::make_shared<Impl>();
    impl->image = std::move(image);
    return drawn.emplace(decal, Bitmap(std::move(impl))).first->second;
}

std::int32_t Bitmap::GetWidth() const {
    return impl_ ? impl_->image.width() : 0;
}

std::int32_t Bitmap::GetHeight() const {
    return impl_ ? impl_->image.height() : 0;
}

} // namespace UIF
