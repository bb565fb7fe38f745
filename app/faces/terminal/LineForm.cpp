#include "app/faces/terminal/LineForm.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace dinmala {

namespace {

using Json = nlohmann::ordered_json;

std::string compact(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// A text as Pango markup that shows it as it is.
std::string markup(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&') {
            escaped += "&amp;";
        } else if (c == '<') {
            escaped += "&lt;";
        } else if (c == '>') {
            escaped += "&gt;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

Json classes(const DaySummary& day) {
    Json list = Json::array();
    if (day.holiday) list.push_back("holiday");
    if (day.provisional) list.push_back("provisional");
    return list;
}

}  // namespace

std::optional<LineForm> lineFormNamed(std::string_view word) {
    if (word.empty()) return LineForm::plain;
    if (word == "json") return LineForm::waybar;
    if (word == "i3bar") return LineForm::i3bar;
    return std::nullopt;
}

std::string lineHeader(LineForm form) { return form == LineForm::i3bar ? "{\"version\":1}\n[\n" : ""; }

std::string lineText(LineForm form, const std::string& title, const DaySummary& day) {
    std::string text = title;
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    if (form == LineForm::plain) return text + '\n';
    if (form == LineForm::waybar) {
        return compact({{"text", markup(text)}, {"tooltip", markup(day.text)}, {"class", classes(day)}}) + '\n';
    }
    Json block{{"name", "dinmala"}, {"full_text", text}, {"markup", "none"}};
    if (day.holiday) block["color"] = "#ff6666";
    // i3bar shows neither; the underscore marks what is for others.
    block["_tooltip"] = day.text;
    block["_class"] = classes(day);
    return "[" + compact(block) + "],\n";
}

}  // namespace dinmala
