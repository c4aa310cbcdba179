#include "controls/ViewChild.h"

#include <atomic>

namespace platform::ui {

std::string UniqueStationName(const char* kind) {
    static std::atomic<unsigned long long> serial{0};
    return std::string(kind) + "." + std::to_string(++serial);
}

} // namespace platform::ui
