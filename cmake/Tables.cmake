# The data files as C++ constants, made by tools/make_tables at build time. A new
# year needs its two files and nothing here.
set(out ${DINMALA_TABLES_DIR}/generated)
set(data ${PROJECT_SOURCE_DIR}/almanac/data)
set(lengths ${PROJECT_SOURCE_DIR}/calendar/data/month_lengths.txt)

add_executable(make_tables ${PROJECT_SOURCE_DIR}/tools/make_tables.cpp)
set_target_properties(make_tables PROPERTIES CXX_EXTENSIONS OFF)
target_link_libraries(make_tables PRIVATE dinmala_yearfile dinmala_warnings)

file(GLOB event_years CONFIGURE_DEPENDS ${data}/events-[0-9][0-9][0-9][0-9].txt)
file(GLOB tithi_years CONFIGURE_DEPENDS ${data}/tithi-[0-9][0-9][0-9][0-9].txt)
file(GLOB current_years CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/almanac/years/[0-9][0-9][0-9][0-9].txt)
file(GLOB current_names CONFIGURE_DEPENDS ${data}/event_names.txt ${data}/event_names_current.txt)
file(GLOB important_years CONFIGURE_DEPENDS ${data}/important-[0-9][0-9][0-9][0-9].txt)

function(dinmala_table file)
    cmake_parse_arguments(arg "" "" "MODE;FROM" ${ARGN})
    set(sources ${arg_FROM})
    list(REMOVE_ITEM sources --)
    add_custom_command(
        OUTPUT ${out}/${file}
        COMMAND make_tables ${arg_MODE} ${out}/${file} ${arg_FROM}
        DEPENDS make_tables ${sources}
        COMMENT "Making ${file}"
        VERBATIM)
    set_property(GLOBAL APPEND PROPERTY dinmala_table_files ${out}/${file})
endfunction()

dinmala_table(MonthTable.inc MODE months FROM ${lengths})
dinmala_table(month_lengths.inc MODE lengths kMonthLengths FROM ${lengths})
dinmala_table(event_names.inc MODE names kEventNames FROM ${data}/event_names.txt)
dinmala_table(tithi_names.inc MODE names kTithiNames FROM ${data}/tithi_names.txt)
dinmala_table(event_years.inc MODE years kEventYears FROM ${lengths} ${event_years})
dinmala_table(tithi_years.inc MODE years kTithiYears FROM ${lengths} ${tithi_years})
dinmala_table(important_years.inc MODE dates kImportantYears FROM ${important_years})

dinmala_table(current_event_names.inc MODE names kCurrentEventNames FROM ${current_names})
dinmala_table(english_event_names.inc MODE names kEnglishEventNames FROM ${data}/event_names_english.txt)
dinmala_table(current_years.inc MODE packed kCurrentYears FROM ${current_names} -- ${current_years})
dinmala_table(bs_fixed_events.inc MODE fixed kBsFixedEvents FROM ${PROJECT_SOURCE_DIR}/almanac/rules/festivals.txt)

get_property(table_files GLOBAL PROPERTY dinmala_table_files)
add_custom_target(dinmala_tables DEPENDS ${table_files})
