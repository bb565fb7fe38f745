# dinmala_warnings: what every target of ours is compiled with. Errors are the
# presets' business, so that a newer compiler's new warning breaks nobody's build.
add_library(dinmala_warnings INTERFACE)
target_compile_options(dinmala_warnings INTERFACE
    -Wall -Wextra -Wpedantic
    -Wconversion             # a silent change of value
    -Wsign-conversion        # signed and unsigned mixed: the calendar has both
    -Wshadow                 # one name for two things
    -Wold-style-cast         # says nothing about its intent
    -Wnon-virtual-dtor       # an interface that cannot be deleted
    -Woverloaded-virtual     # hides what it meant to override
    -Wcast-align             # an access that some machines refuse
    -Wformat=2               # a format that does not match
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wsuggest-override>
    # A path on which a pointer is null. g++ 12 at -O3 sees some in std::variant and stream iterators that are not there.
    $<$<CXX_COMPILER_ID:Clang>:-Wnull-dereference>
    # g++ 12 sees overlaps in std::string's operator+ that are not there (GCC bug 105329).
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
