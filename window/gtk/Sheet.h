/// The month or the year on paper, as it is hung on a wall.
#pragma once

#include <gtk/gtk.h>

#include <string>

#include "window/Page.h"

namespace dinmala {

enum class Sheet { month, year };

/// Asks for a printer and prints the page's month, lying, or its year, upright.
void printSheet(GtkWindow* parent, const Page& page, Sheet sheet);

/// The same as a PDF file of A4. Needs no display.
/// @return why it could not be written; "" when it was
[[nodiscard]] std::string writeSheet(const std::string& path, const Page& page, Sheet sheet);

}  // namespace dinmala
