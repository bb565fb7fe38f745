// What terminal_face_test starts in a terminal of its own: the face with a menu of
// two toggles, the second of which complains. A program apart, because a forked
// process has no thread left to tell the main loop of signals.
#include <glib.h>

#include <clocale>
#include <cstdio>

#include "app/platform/terminal/TerminalFace.h"
#include "tests/app/terminal/FakeMenu.h"

int main() {
    using namespace dinmala;
    std::setlocale(LC_ALL, "C.UTF-8");
    FakeMenu fake;
    fake.addToggle("Year");
    fake.add("Complain", MenuItem::Kind::toggle).setAction([] { std::fputs("cannot keep it\n", stderr); });
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    TerminalFace face([&] { g_main_loop_quit(loop); });
    face.setOutlets(fake.outlets);
    const auto item = face.statusItemWithLength(-1.0);
    item->setTitle(" बैशाख ७");
    face.whenShown([&] { item->setTitle("shown"); });
    g_main_loop_run(loop);
}
