// Date texts. A BS day of the table that converts must convert back, and any text
// must get the answer that a plain scan of the records gives.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Text.h"
#include "calendar/DataStore.h"
#include "fuzz/Require.h"

namespace {

using dinmala::require;

/// "2013-04-14" as "20130414".
std::string withoutDashes(std::string text) {
    std::erase(text, '-');
    return text;
}

/// "7-01-2070" as "07012070".
std::string bsText(const std::string& result) {
    const std::string digits = withoutDashes(result);
    return digits.size() == 7 ? "0" + digits : digits;
}

bool isPlainDigits(const std::string& text) { return text.find_first_not_of("0123456789") == std::string::npos; }

void check(const std::string& text) {
    static const dinmala::DataStore store;
    static const dinmala::DataStore scanning = [] {
        dinmala::DataStore copy;
        copy.setDataArray(std::vector<std::string>{store.dataArray()});
        return copy;
    }();
    const auto ad = store.convertBs2Ad(text);
    const auto bs = store.convertAd2Bs(text);
    require(ad == scanning.convertBs2Ad(text), "a BS date has one answer");
    require(bs == scanning.convertAd2Bs(text), "an AD date has one answer");

    // A month of the table, whose index 0 is also that of a miss, and a day of it.
    if (text.size() == 8 && isPlainDigits(text)) {
        const std::uint64_t index = store.findIndexByBs(text);
        const bool inTable = store.dataArray()[index].substr(0, 6) == text.substr(2);
        if (inTable && text.substr(0, 2) != "00" && ad) {
            const auto back = store.convertAd2Bs(withoutDashes(*ad));
            require(back && bsText(*back) == text, "a BS day that converts converts back");
        }
        const bool adInTable = text >= "19420413" && text <= "20430413" && text.substr(6) != "00" &&
                               text.substr(4, 2) != "00" && text.substr(4, 2) <= "12";
        if (adInTable && bs) {
            const auto back = store.convertBs2Ad(bsText(*bs));
            require(back && withoutDashes(*back) == text, "an AD day that converts converts back");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    check(std::string(reinterpret_cast<const char*>(data), size));
    // The same bytes as a day in or near the table, in both forms.
    if (size < 3) return 0;
    const std::string day = dinmala::padded(data[0] % 36U, 2);
    const std::string month = dinmala::padded(data[1] % 14U, 2);
    check(day + month + std::to_string(1995U + data[2] % 110U));
    check(std::to_string(1938U + data[2] % 110U) + month + day);
    return 0;
}
