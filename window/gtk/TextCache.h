/// Texts as they are drawn: shaping Devanagari takes longer than drawing it, and a calendar says the same again.
#pragma once

#include <gtk/gtk.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace dinmala {

class TextCache {
public:
    enum class Style { number, numberBold, small, smallBold };

    /// Takes fonts and their sizes from a widget, and forgets all texts.
    void follow(GtkWidget* widget);

    /// The text on one line, cut with "…" to a width in pixels; it holds until the next call.
    [[nodiscard]] PangoLayout* layout(Style style, std::string_view text, int width);
    /// The height of a line in pixels.
    [[nodiscard]] int height(Style style) const { return heights_[static_cast<std::size_t>(style)]; }

    /// Whether no font has the letters.
    [[nodiscard]] bool lacksDevanagari() {
        return pango_layout_get_unknown_glyphs_count(layout(Style::small, "क", -1)) > 0;
    }

private:
    struct Unref {
        void operator()(gpointer object) const { g_object_unref(object); }
    };
    struct Free {
        void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
    };

    std::unique_ptr<PangoContext, Unref> context_;
    std::array<std::unique_ptr<PangoFontDescription, Free>, 4> fonts_;
    std::array<int, 4> heights_{};
    std::unordered_map<std::string, std::unique_ptr<PangoLayout, Unref>> layouts_;
};

}  // namespace dinmala
