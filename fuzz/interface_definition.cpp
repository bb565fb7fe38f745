// A menu definition: refused with a message, or made into a menu whose every row can be shown and chosen, with every
// outlet it names connected.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "app/Interface.h"
#include "fuzz/Require.h"
#include "tests/support/FakePlatform.h"

namespace {

void chooseAll(const dinmala::Menu& menu) {
    for (const auto& item : menu.items()) {
        item->choose();
        if (item->submenu() != nullptr) chooseAll(*item->submenu());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        dinmala::Interface interface { text };
        dinmala::test::Shell shell{dinmala::test::nepal(2013, 4, 18)};
        dinmala::AppDelegate delegate{shell.platform(), interface.outlets()};
        int ended = 0;
        interface.connect(delegate, [&] { ++ended; });
        delegate.awakeFromNib();
        chooseAll(*interface.outlets().statusMenu);
        const auto& title = delegate.statusItem()->title();
        dinmala::require(title.has_value() != (delegate.statusItem()->image() != nullptr), "a title or the flag");
        const auto* day = interface.outlets().txtDay;
        dinmala::require(day == nullptr || day->stringValue() == "५", "the label has the piece");
    } catch (const dinmala::InterfaceError& error) {
        dinmala::require(*error.what() != '\0', "a refusal has words");
    }
    return 0;
}
