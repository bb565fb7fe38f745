#include "almanac/YearList.h"

#include <mutex>

namespace dinmala {

TextMap toTextMap(std::span<const KeyedText> entries) {
    TextMap map;
    map.reserve(entries.size());
    for (const auto& [key, text] : entries) map.insert_or_assign(key, text);
    return map;
}

std::shared_ptr<const TextMap> sharedTextMap(std::span<const KeyedText> entries, std::span<const KeyedText> constants) {
    if (entries.data() != constants.data() || entries.size() != constants.size())
        return std::make_shared<const TextMap>(toTextMap(entries));
    static std::mutex guard;  // stores may be made on several threads
    const std::lock_guard lock{guard};
    static std::unordered_map<const KeyedText*, std::shared_ptr<const TextMap>> maps;
    auto& map = maps[entries.data()];
    if (!map) map = std::make_shared<const TextMap>(toTextMap(entries));
    return map;
}

std::vector<std::string> namesOfDay(const TextMap& lists, const TextMap& names, std::string_view year,
                                    std::string_view dayMonth) {
    std::vector<std::string> result;
    const auto list = lists.find(year);
    if (list == lists.end()) return result;
    forEachToken(list->second, kDayMonthLength, [&](const YearToken& token) {
        if (token.head != dayMonth) return;
        if (const auto name = names.find(token.id); name != names.end()) result.emplace_back(name->second);
    });
    return result;
}

}  // namespace dinmala
