#include "zelcore/Localization.h"

#include <utility>

namespace zelcore {
namespace {

constexpr std::string_view kKeyPrefix = "$$$/";

TranslationTable& Table() {
    static TranslationTable table;
    return table;
}

} // namespace

std::string_view LocalizationKeyPath(std::string_view keyAndDefault) {
    if (!keyAndDefault.starts_with(kKeyPrefix)) {
        return {};
    }
    return keyAndDefault.substr(0, keyAndDefault.find('='));
}

UTF16String Localize(std::string_view keyAndDefault) {
    const std::string_view path = LocalizationKeyPath(keyAndDefault);
    if (path.empty()) {
        return ToUTF16(keyAndDefault);
    }
    if (auto it = Table().find(path); it != Table().end()) {
        return it->second;
    }
    const std::size_t equals = keyAndDefault.find('=');
    return equals == std::string_view::npos ? UTF16String()
                                            : ToUTF16(keyAndDefault.substr(equals + 1));
}

UTF16String Localize(std::u16string_view keyAndDefault) {
    return Localize(ToUTF8(keyAndDefault));
}

void InstallTranslationTable(TranslationTable table) {
    Table() = std::move(table);
}

} // namespace zelcore
