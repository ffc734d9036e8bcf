#include "window/local_strings.h"

void LocalStrings::Set(std::int32_t id, const HorivoWideChar* text) {
    if (text != nullptr) texts_.insert_or_assign(id, text);
}

const HorivoWideChar* LocalStrings::Get(std::int32_t id,
                                        const HorivoWideChar* fallback) const noexcept {
    const auto found = texts_.find(id);
    return found != texts_.end() ? found->second.c_str() : fallback;
}
