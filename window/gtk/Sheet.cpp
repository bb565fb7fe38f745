#include "window/gtk/Sheet.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "agenda/Sentences.h"
#include "i18n/Translation.h"

namespace dinmala {

namespace {

constexpr double kLong = 842, kShort = 595;  // A4 in points
constexpr double kMargin = 36;

/// What is drawn on, in points; every text in a box of its own.
class Paper {
public:
    explicit Paper(cairo_t* cairo) : cairo_(cairo), layout_(pango_cairo_create_layout(cairo)) {
        // One point of the font is one of the paper, whatever the printer resolves.
        pango_cairo_context_set_resolution(pango_layout_get_context(layout_), 72);
    }
    ~Paper() { g_object_unref(layout_); }
    Paper(const Paper&) = delete;
    Paper& operator=(const Paper&) = delete;

    void colour(bool isRed) {
        if (isRed) {
            cairo_set_source_rgb(cairo_, 0.72, 0.08, 0.13);
        } else {
            cairo_set_source_rgb(cairo_, 0, 0, 0);
        }
    }

    /// @param height of the box: a text that needs more is written smaller, and cut with "…" only as the last resort
    /// @return how much of the height it takes
    double text(std::string_view text, double size, double x, double y, double width, double height,
                PangoAlignment alignment = PANGO_ALIGN_LEFT, bool bold = false) {
        if (text.empty()) return 0;
        constexpr double kSmallest = 5, kStep = 0.5;
        double needed = lay(text, size, width, alignment, bold);
        for (double less = size - kStep; needed > height && less >= kSmallest; less -= kStep) {
            needed = lay(text, less, width, alignment, bold);
        }
        pango_layout_set_height(layout_, static_cast<int>(height * PANGO_SCALE));
        cairo_move_to(cairo_, x, y);
        pango_cairo_show_layout(cairo_, layout_);
        return std::min(needed, height);
    }

    void box(double x, double y, double width, double height, double line, bool filled = false) {
        cairo_rectangle(cairo_, x, y, width, height);
        cairo_set_line_width(cairo_, line);
        if (filled) {
            cairo_fill(cairo_);
        } else {
            cairo_stroke(cairo_);
        }
    }

private:
    /// @return the height of all its lines
    double lay(std::string_view text, double size, double width, PangoAlignment alignment, bool bold) {
        PangoFontDescription* const font = pango_font_description_from_string("Sans");
        pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
        if (bold) pango_font_description_set_weight(font, PANGO_WEIGHT_BOLD);
        pango_layout_set_font_description(layout_, font);
        pango_font_description_free(font);
        pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
        pango_layout_set_width(layout_, static_cast<int>(width * PANGO_SCALE));
        pango_layout_set_height(layout_, G_MAXINT);
        pango_layout_set_ellipsize(layout_, PANGO_ELLIPSIZE_END);
        pango_layout_set_wrap(layout_, PANGO_WRAP_WORD_CHAR);
        pango_layout_set_alignment(layout_, alignment);
        int needed = 0;
        pango_layout_get_size(layout_, nullptr, &needed);
        return static_cast<double>(needed) / PANGO_SCALE;
    }

    cairo_t* cairo_;
    PangoLayout* layout_;
};

bool isOff(const Cell& cell) { return cell.saturday || cell.holiday == Holiday::national; }

/// The weeks that hold a day of the month: the last ones may be all of the next.
std::size_t weeksOf(const Page& page) {
    std::size_t last = 0;
    for (std::size_t place = 0; place < Page::kCells; ++place) {
        if (!page.cells()[place].otherMonth) last = place;
    }
    return last / 7 + 1;
}

/// A sentence each of what is to be said, below the days. Nothing of today: the sheet hangs there on other days too.
std::string notesOf(const Page& page) {
    std::string notes;
    for (const std::string& note : page.yearNotes()) notes += (notes.empty() ? "" : "  ") + note;
    return notes;
}

/// The day's events beside the one that its cell names.
std::string furtherEvents(const Page& page, const Cell& cell) {
    const auto day = cell.date ? page.edition().almanac.day(*cell.date) : std::nullopt;
    std::string text;
    if (!day) return text;
    for (const Event& event : day->events) {
        const std::string_view name = eventName(event, page.look().language);
        if (name != cell.event) text.append(text.empty() ? "" : ", ").append(name);
    }
    return text;
}

void drawMonth(Paper& paper, const Page& page, double width, double height) {
    paper.colour(false);
    paper.text(page.title(), 26, 0, 0, width * 0.6, 40, PANGO_ALIGN_LEFT, true);
    paper.text(page.adMonths(), 15, width * 0.6, 10, width * 0.4, 24, PANGO_ALIGN_RIGHT);
    const double top = 46, headings = 20, foot = 16;
    const std::size_t weeks = weeksOf(page);
    const double wide = width / 7, high = (height - top - headings - foot) / static_cast<double>(weeks);
    for (std::size_t day = 0; day < 7; ++day) {
        paper.colour(day == 6);
        paper.text(page.weekDaysWhole()[day], 12, static_cast<double>(day) * wide, top, wide, headings,
                   PANGO_ALIGN_CENTER, true);
    }
    for (std::size_t place = 0; place < weeks * 7; ++place) {
        const Cell& cell = page.cells()[place];
        const double x = static_cast<double>(place % 7) * wide;
        const std::size_t week = place / 7;
        const double y = top + headings + static_cast<double>(week) * high;
        paper.colour(false);
        paper.box(x, y, wide, high, 0.6);
        if (cell.otherMonth) continue;
        const double inside = wide - 10;
        paper.text(cell.adDay, 9, x + 5, y + 4, inside, 14, PANGO_ALIGN_RIGHT);
        paper.text(cell.tithi, 9, x + 5, y + 34, inside, 14);
        paper.colour(isOff(cell));
        if (cell.holiday == Holiday::national) paper.box(x + wide - 11, y + 19, 6, 6, 0, true);
        if (cell.holiday == Holiday::group) paper.box(x + wide - 11, y + 19, 6, 6, 0.6);
        paper.text(cell.bsDay, 22, x + 5, y + 2, inside * 0.7, 34, PANGO_ALIGN_LEFT, isOff(cell));
        const double from = y + 48, room = high - 50;
        const std::string further = furtherEvents(page, cell);
        const bool isNational = cell.holiday == Holiday::national;
        const double named = paper.text(cell.event, 8.5, x + 5, from, inside, further.empty() ? room : room * 0.6,
                                        PANGO_ALIGN_LEFT, isNational);
        paper.colour(false);
        paper.text(further, 7.5, x + 5, from + named, inside, room - named);
    }
    paper.colour(false);
    paper.text(notesOf(page), 8, 0, height - foot + 4, width, foot - 2);
}

void drawYear(Paper& paper, const Page& page, double width, double height) {
    const std::string title = page.title();
    const std::string year = title.substr(title.rfind(' ') + 1);
    paper.colour(false);
    paper.text(year, 28, 0, 0, width, 40, PANGO_ALIGN_CENTER, true);
    const double top = 46, foot = 14, gap = 12;
    const double wide = (width - 2 * gap) / 3, high = (height - top - foot - 3 * gap) / 4;
    Page one = page;
    for (unsigned month = 1; month <= 12; ++month) {
        if (!one.goTo(BsYearMonth{page.month().year, BsMonth{month}})) continue;
        const unsigned column = (month - 1) % 3, row = (month - 1) / 3;
        const double x = column * (wide + gap), y = top + row * (high + gap);
        const std::string name = one.title();
        paper.colour(false);
        paper.text(name.substr(0, name.rfind(' ')), 13, x, y, wide * 0.5, 20, PANGO_ALIGN_LEFT, true);
        paper.text(one.adMonths(), 8, x + wide * 0.4, y + 5, wide * 0.6, 14, PANGO_ALIGN_RIGHT);
        const double cellWide = wide / 7, cellHigh = (high - 36) / 6;
        for (std::size_t day = 0; day < 7; ++day) {
            paper.colour(day == 6);
            paper.text(one.weekDays()[day], 7.5, x + static_cast<double>(day) * cellWide, y + 22, cellWide, 12,
                       PANGO_ALIGN_CENTER);
        }
        for (std::size_t place = 0; place < Page::kCells; ++place) {
            const Cell& cell = one.cells()[place];
            if (cell.otherMonth) continue;
            const double left = x + static_cast<double>(place % 7) * cellWide;
            const std::size_t week = place / 7;
            const double above = y + 36 + static_cast<double>(week) * cellHigh;
            paper.colour(isOff(cell));
            paper.text(cell.bsDay, 10, left, above, cellWide - 6, cellHigh, PANGO_ALIGN_CENTER, isOff(cell));
            if (cell.holiday == Holiday::national) paper.box(left + cellWide / 2 - 8, above + 14.5, 10, 0.8, 0, true);
            paper.colour(false);
            paper.text(cell.adDay, 5.5, left, above + 1, cellWide - 1, 8, PANGO_ALIGN_RIGHT);
        }
    }
    paper.colour(false);
    paper.text(notesOf(page), 8, 0, height - foot + 3, width, foot - 2);
}

void draw(cairo_t* cairo, const Page& page, Sheet sheet, double width, double height) {
    Paper paper{cairo};
    (sheet == Sheet::month ? drawMonth : drawYear)(paper, page, width, height);
}

struct Job {
    Page page;  // a copy: while the dialog is open the window goes on
    Sheet sheet;
};

}  // namespace

void printSheet(GtkWindow* parent, const Page& page, Sheet sheet) {
    GtkPrintOperation* const operation = gtk_print_operation_new();
    gtk_print_operation_set_n_pages(operation, 1);
    gtk_print_operation_set_unit(operation, GTK_UNIT_POINTS);
    gtk_print_operation_set_job_name(operation, page.title().c_str());
    GtkPageSetup* const setup = gtk_page_setup_new();
    gtk_page_setup_set_orientation(
        setup, sheet == Sheet::month ? GTK_PAGE_ORIENTATION_LANDSCAPE : GTK_PAGE_ORIENTATION_PORTRAIT);
    gtk_print_operation_set_default_page_setup(operation, setup);
    g_object_unref(setup);
    Job job{page, sheet};
    g_signal_connect(operation, "draw-page",
                     G_CALLBACK(+[](GtkPrintOperation*, GtkPrintContext* context, int, Job* drawn) {
                         draw(gtk_print_context_get_cairo_context(context), drawn->page, drawn->sheet,
                              gtk_print_context_get_width(context), gtk_print_context_get_height(context));
                     }),
                     &job);
    GError* error = nullptr;
    gtk_print_operation_run(operation, GTK_PRINT_OPERATION_ACTION_PRINT_DIALOG, parent, &error);
    g_object_unref(operation);
    if (error == nullptr) return;
    const std::string text = tr("printing failed: {1}", {error->message});
    g_error_free(error);
    GtkWidget* const dialog =
        gtk_message_dialog_new(parent, GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR, GTK_BUTTONS_CLOSE, "%s", text.c_str());
    gtk_dialog_run(GTK_DIALOG(dialog));
    gtk_widget_destroy(dialog);
}

std::string writeSheet(const std::string& path, const Page& page, Sheet sheet) {
    const double width = sheet == Sheet::month ? kLong : kShort, height = sheet == Sheet::month ? kShort : kLong;
    // Written here and not by cairo, which takes a full disk for a good end.
    std::string pdf;
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface{
        cairo_pdf_surface_create_for_stream(
            [](void* text, const unsigned char* data, unsigned length) {
                static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(data), length);
                return CAIRO_STATUS_SUCCESS;
            },
            &pdf, width, height),
        cairo_surface_destroy};
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo{cairo_create(surface.get()), cairo_destroy};
    cairo_translate(cairo.get(), kMargin, kMargin);
    draw(cairo.get(), page, sheet, width - 2 * kMargin, height - 2 * kMargin);
    cairo_show_page(cairo.get());
    cairo_surface_finish(surface.get());
    const cairo_status_t status = cairo_surface_status(surface.get());
    if (status != CAIRO_STATUS_SUCCESS) return cairo_status_to_string(status);
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return std::strerror(errno);
    const bool written = std::fwrite(pdf.data(), 1, pdf.size(), file) == pdf.size();
    const int error = errno;
    if (std::fclose(file) != 0) return std::strerror(errno);
    return written ? std::string{} : std::strerror(error);
}

}  // namespace dinmala
