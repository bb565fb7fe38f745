#include "window/gtk/TextCache.h"

#include <algorithm>

namespace dinmala {

namespace {

constexpr std::size_t kMost = 600;  // some months' texts
constexpr int kLeast = 8 * PANGO_SCALE;

}  // namespace

void TextCache::follow(GtkWidget* widget) {
    layouts_.clear();
    context_.reset(gtk_widget_create_pango_context(widget));
    const PangoFontDescription* const base = pango_context_get_font_description(context_.get());
    const int size = pango_font_description_get_size(base);
    const bool isPixels = pango_font_description_get_size_is_absolute(base) != FALSE;
    for (const Style style : {Style::number, Style::numberBold, Style::small, Style::smallBold}) {
        const auto place = static_cast<std::size_t>(style);
        fonts_[place].reset(pango_font_description_copy(base));
        PangoFontDescription* const font = fonts_[place].get();
        const bool isNumber = style == Style::number || style == Style::numberBold;
        const int wanted = isNumber ? size * 8 / 5 : std::max(size * 17 / 20, isPixels ? 0 : kLeast);
        if (isPixels) {
            pango_font_description_set_absolute_size(font, wanted);
        } else {
            pango_font_description_set_size(font, wanted);
        }
        const bool isBold = style == Style::numberBold || style == Style::smallBold;
        pango_font_description_set_weight(font, isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
        int height = 0;
        for (const char* text : {"Ag", "र्णिं"}) {
            int one = 0;
            pango_layout_get_pixel_size(layout(style, text, -1), nullptr, &one);
            height = std::max(height, one);
        }
        heights_[place] = height;
    }
}

PangoLayout* TextCache::layout(Style style, std::string_view text, int width) {
    std::string key{text};
    key += static_cast<char>('0' + static_cast<int>(style));
    key += std::to_string(width);
    if (const auto found = layouts_.find(key); found != layouts_.end()) return found->second.get();
    if (layouts_.size() >= kMost) layouts_.clear();
    PangoLayout* const made = pango_layout_new(context_.get());
    pango_layout_set_font_description(made, fonts_[static_cast<std::size_t>(style)].get());
    pango_layout_set_single_paragraph_mode(made, TRUE);
    if (width >= 0) {
        pango_layout_set_width(made, width * PANGO_SCALE);
        pango_layout_set_ellipsize(made, PANGO_ELLIPSIZE_END);
    }
    pango_layout_set_text(made, text.data(), static_cast<int>(text.size()));
    layouts_.emplace(std::move(key), made);
    return made;
}

}  // namespace dinmala
