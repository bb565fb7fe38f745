#include "search/FestivalNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "almanac/Edition.h"
#include "almanac/EventWords.h"
#include "base/DateText.h"
#include "base/Text.h"

namespace dinmala {

namespace {

using Ids = std::vector<std::uint16_t>;

struct Spellings {
    std::string_view names;  // between "|"
    std::initializer_list<std::uint16_t> ids;
};

// What the almanac's own names do not tell: festivals of several days by their known ones, and what people write in
// place of the name in print. Spellings that fold() makes one stand here once.
const Spellings kSpellings[] = {
    {"dashain|bada dashain|dasai|दशैं|बडा दशैं|दशै", {57, 59, 60, 62}},
    {"phulpati|phulpaati|फूलपाति", {59}},
    {"maha ashtami|maha astami|ashtami|महाअष्टमी", {60}},
    {"maha navami|महानवमी", {61}},
    {"vijaya dashami|dashain tika|विजया दशमी", {62}},
    {"chaite dashain|chaite dasai|चैते दशैं", {168}},
    {"tihar|yamapanchak|yama panchak|तिहार|यमपञ्चक", {120, 121, 66, 68}},
    {"laxmi puja|lakshmi puja|diwali|deepavali|deepawoli|dipawali|लक्ष्मी पूजा|दीपावली|दिवाली", {66}},
    {"kag tihar|काग तिहार", {120}},
    {"kukur tihar|कुकुर तिहार", {121}},
    {"gobardhan puja|goru tihar|गोवर्धन पूजा|गोरु तिहार", {124, 67}},
    {"mha puja|म्ह पूजा", {122}},
    {"bhai tika|bhai teeka|bhai dooj|kija puja|भाइ टीका|किजा पूजा", {68}},
    {"nepal sambat|nepal sambat new year|nhu daya|newari new year|नेपाल संवत्|नेपाल संवत् नयाँ वर्ष|न्हू दँ",
     {657, 134, 451, 512, 608, 631}},
    {"chhath|chhath puja|chhath parva|छठ|छठ पूजा|छठ पर्व", {69}},
    {"teej|haritalika teej|hartalika teej|तीज|हरितालिका तीज", {52}},
    {"rishi panchami|ऋषि पञ्चमी", {53}},
    {"holi|fagu|fagu purnima|faguwa|होली|फागु|फागु पूर्णिमा", {10, 163, 164}},
    {"terai holi|tarai holi|तराई होली", {163, 164}},
    {"shivaratri|shivratri|maha shivaratri|maha shivratri|शिवरात्रि|महाशिवरात्रि", {159, 8}},
    {"maghe sankranti|maghe sakranti|magh sankranti|makar sankranti|माघे संक्रान्ति|माघे सक्रान्ति|मकर संक्रान्ति", {1}},
    {"saune sankranti|shrawan sankranti|luto falne|साउने संक्रान्ति|लुतो फाल्ने", {42}},
    {"lhosar|losar|loshar|lhochhar|ल्होसार|ल्होछार|लोसार", {148, 146, 11, 199}},
    {"tamu lhosar|tamu losar|tamu lhochhar|तमु ल्होसार|तमु ल्होछार", {148}},
    {"tola lhosar|tola losar|तोला ल्होसार", {146}},
    {"sonam lhosar|sonam losar|sonam lhochhar|सोनाम ल्होसार|सोनाम ल्होछार", {11}},
    {"gyalpo lhosar|gyalpo losar|ghyalpo lhosar|ग्याल्पो ल्होसार|ग्याल्बो ल्होसार", {199}},
    {"new year|नयाँ वर्ष|नव वर्ष", {5, 658}},
    {"nepali new year|bs new year|naya barsa|naya barsha|nepali naya barsa", {5}},
    {"english new year|ad new year|gregorian new year|अंग्रेजी नयाँ वर्ष", {658}},
    {"buddha jayanti|buddha purnima|बुद्ध जयन्ती|बुद्ध पूर्णिमा", {27}},
    {"janmashtami|janmastami|krishna janmashtami|krishna janmastami|krishna ashtami|krishnashtami|जन्माष्टमी|"
     "कृष्ण जन्माष्टमी|कृष्णाष्टमी",
     {47, 48}},
    {"raksha bandhan|rakshya bandhan|rakhi|रक्षाबन्धन|राखी", {99}},
    {"janai purnima|जनै पूर्णिमा", {260}},
    {"gai jatra|गाईजात्रा", {46}},
    {"indra jatra|yenya|इन्द्रजात्रा", {108}},
    {"ghode jatra|घोडेजात्रा", {14}},
    {"bhoto jatra|भोटो जात्रा", {661}},
    {"nag panchami|नागपञ्चमी", {45}},
    {"ram navami|रामनवमी", {15, 169}},
    {"saraswati puja|saraswoti puja|सरस्वती पूजा", {4}},
    {"basanta panchami|basant panchami|वसन्त पञ्चमी", {153}},
    {"shri panchami|श्रीपञ्चमी", {3}},
    {"mothers day|mata tirtha aunsi|matatirtha|ama ko mukh herne|मातातीर्थ औंसी|आमाको मुख हेर्ने दिन", {23}},
    {"fathers day|kushe aunsi|gokarna aunsi|buba ko mukh herne|कुशे औंसी|बुबाको मुख हेर्ने दिन", {50, 187}},
    {"guru purnima|गुरु पूर्णिमा", {586, 43}},
    {"gathemangal|gathamangal|gatha muga|गठेमंगल|गठामुग", {249}},
    {"ganesh chaturthi|ganesh chauthi|chatha|गणेश चतुर्थी|चथा", {271}},
    {"vivaha panchami|bibah panchami|विवाह पञ्चमी", {522}},
    {"bishwakarma puja|vishwakarma puja|biswakarma puja|विश्वकर्मा पूजा", {109}},
    {"thuli ekadashi|haribodhini ekadashi|ठूली एकादशी|हरिबोधिनी एकादशी", {126}},
    {"sorha shraddha|sora shraddha|pitri paksha|सोह्र श्राद्ध", {104}},
    {"kojagrat purnima|kojagrat|कोजाग्रत पूर्णिमा", {64, 114}},
    {"akshaya tritiya|अक्षय तृतीया", {216}},
    {"yomari punhi|yomari purnima|योमरी पुन्ही", {425}},
    {"gaura|gaura parva|गौरा|गौरा पर्व", {649, 262}},
    {"dahi chiura|dahi chiura khane din|दही चिउरा", {477}},
    {"republic day|ganatantra diwas|गणतन्त्र दिवस", {94, 440}},
    {"constitution day|sambidhan diwas|संविधान दिवस", {650}},
    {"democracy day|prajatantra diwas|प्रजातन्त्र दिवस", {7}},
    {"loktantra diwas|loktantra day|लोकतन्त्र दिवस", {21}},
    {"martyrs day|sahid diwas|शहीद दिवस|सहिद दिवस", {12, 155}},
    {"labour day|labor day|may day|majdur diwas|मजदुर दिवस|श्रमिक दिवस", {22}},
    {"womens day|nari diwas|mahila diwas|नारी दिवस|महिला दिवस", {9}},
    {"childrens day|bal diwas|बाल दिवस", {107}},
    {"prithvi jayanti|prithivi jayanti|पृथ्वी जयन्ती", {453}},
    {"christmas|xmas|x-mas|क्रिसमस", {17}},
    {"eid|ईद", {654, 655, 58}},
    {"eid al fitr|eid ul fitr|ईद उल फित्र", {654, 58}},
    {"eid al adha|eid ul adha|bakra eid|bakar eid|bakrid|बकर ईद|बकरिद", {655}},
};

/// The next character of a text, which is made shorter by it; U+FFFD for bytes that are none.
char32_t takeCharacter(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const unsigned first = byte(0);
    std::size_t length = 1;
    char32_t value = first < 0x80 ? first : 0xFFFD;
    if (first >= 0xC2 && first < 0xE0) {
        length = 2;
        value = ((first & 0x1FU) << 6U) | (byte(1) & 0x3FU);
    } else if (first >= 0xE0 && first < 0xF0) {
        length = 3;
        value = ((first & 0xFU) << 12U) | ((byte(1) & 0x3FU) << 6U) | (byte(2) & 0x3FU);
    }
    text.remove_prefix(std::min(length, text.size()));
    return value;
}

bool isConsonant(char32_t c) { return c >= U'क' && c <= U'ह'; }

/// A name as it is compared, a character a letter: Latin letters small, long and short vowels, स श ष, ब व and the
/// nasals before another letter as one; without blanks, marks and doubled letters.
std::u32string fold(std::string_view text) {
    static const std::map<char32_t, char32_t> kAlike{{U'ई', U'इ'}, {U'ऊ', U'उ'}, {U'ी', U'ि'}, {U'ू', U'ु'},
                                                     {U'श', U'स'}, {U'ष', U'स'}, {U'व', U'ब'}, {U'ँ', U'ं'},
                                                     {U'w', U'b'}, {U'v', U'b'}};
    constexpr char32_t kVirama = 0x094D, kNukta = 0x093C, kVisarga = 0x0903, kDanda = 0x0964, kAnusvara = 0x0902;
    constexpr std::u32string_view kNasals = U"ङञणनम";
    std::u32string letters;
    while (!text.empty()) {
        char32_t c = takeCharacter(text);
        const bool isAscii = c < 0x80;
        if (c >= U'A' && c <= U'Z') c += U'a' - U'A';
        const bool isLatin = (c >= U'a' && c <= U'z') || (c >= U'0' && c <= U'9');
        if (isAscii && !isLatin) {
            if (!letters.empty() && letters.back() == kVirama) letters.pop_back();  // "संवत् " is "संवत "
            continue;
        }
        if (c == kNukta || c == kVisarga || c == kDanda || (c >= 0x2000 && c < 0x2070)) continue;
        if (const auto alike = kAlike.find(c); alike != kAlike.end()) c = alike->second;
        if (isConsonant(c) && letters.size() > 1 && letters.back() == kVirama &&
            kNasals.find(letters[letters.size() - 2]) != std::u32string_view::npos) {
            letters.pop_back();
            letters.back() = kAnusvara;
        }
        letters += c;
    }
    if (!letters.empty() && letters.back() == kVirama) letters.pop_back();

    struct Pair {
        std::u32string_view from, to;
    };
    for (const Pair& pair :
         {Pair{U"sh", U"s"}, Pair{U"ph", U"f"}, Pair{U"x", U"ks"}, Pair{U"ee", U"i"}, Pair{U"oo", U"u"}}) {
        for (std::size_t at = 0; (at = letters.find(pair.from, at)) != std::u32string::npos; at += pair.to.size()) {
            letters.replace(at, pair.from.size(), pair.to);
        }
    }
    letters.erase(std::unique(letters.begin(), letters.end()), letters.end());
    return letters;
}

/// Every name that is known, folded, with its events.
class Names {
public:
    Names() {
        for (const Spellings& one : kSpellings) {
            forEachPiece(one.names, '|', [&](std::string_view name) { names_.try_emplace(fold(name), one.ids); });
        }
        std::map<std::u32string, Ids> others;
        const auto add = [&others](std::string_view name, std::uint16_t id) {
            Ids& ids = others[fold(name)];
            if (!name.empty() && std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
        };
        // "Fagu Purnima (Holi)" is both, and "घण्टाकर्ण व्रत" also without its last word.
        const auto addParts = [&add](std::string_view name, std::uint16_t id) {
            add(name, id);
            const std::size_t open = name.find('(');
            if (open != std::string_view::npos && name.ends_with(')')) {
                add(name.substr(0, open), id);
                add(name.substr(open + 1, name.size() - open - 2), id);
            }
            for (const std::string_view last : {" व्रत", " पर्व"}) {
                if (name.ends_with(last)) add(name.substr(0, name.size() - last.size()), id);
            }
        };
        for (const KeyedText& name : englishEventNames()) {
            addParts(name.second, static_cast<std::uint16_t>(readNumber(name.first).value_or(0)));
        }
        constexpr std::uint16_t kLastId = 999;
        for (std::uint16_t id = 1; id <= kLastId; ++id) {
            for (const Edition* edition : {&currentEdition(), &firstEdition()}) {
                addParts(edition->almanac.eventName(id), id);
            }
        }
        others.erase(std::u32string{});
        names_.merge(others);
    }

    [[nodiscard]] Ids find(std::string_view name) const {
        constexpr std::size_t kLeastBegun = 5, kMostMissing = 2;
        const std::u32string wanted = fold(name);
        if (wanted.empty()) return {};
        auto at = names_.lower_bound(wanted);
        if (at != names_.end() && at->first == wanted) return at->second;
        if (wanted.size() < kLeastBegun) return {};
        std::optional<Ids> found;
        for (; at != names_.end() && at->first.starts_with(wanted); ++at) {
            if (at->first.size() > wanted.size() + kMostMissing) continue;
            if (found && *found != at->second) return {};
            found = at->second;
        }
        return found.value_or(Ids{});
    }

private:
    std::map<std::u32string, Ids> names_;
};

}  // namespace

std::vector<std::uint16_t> festivalNamed(std::string_view name) {
    static const Names names;
    return names.find(name);
}

}  // namespace dinmala
