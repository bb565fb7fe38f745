# `cmake --install build/... --prefix DIR`: the model for other programs, found by
# find_package(dinmala) as dinmala::model and by pkg-config as dinmala.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(headers ${CMAKE_INSTALL_INCLUDEDIR}/dinmala)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/dinmala)

set_target_properties(dinmala_base PROPERTIES EXPORT_NAME base)
set_target_properties(dinmala_yearfile PROPERTIES EXPORT_NAME yearfile)
set_target_properties(dinmala_panchanga PROPERTIES EXPORT_NAME panchanga)
set_target_properties(dinmala_almanac PROPERTIES EXPORT_NAME almanac)
set_target_properties(dinmala_store PROPERTIES EXPORT_NAME model)
install(TARGETS dinmala_base dinmala_yearfile dinmala_panchanga dinmala_almanac dinmala_store
    EXPORT dinmala
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT model
    INCLUDES DESTINATION ${headers})
# What a program includes, and what that includes; tests/install finds a header that is missing.
foreach(header
        base/BsCalendar.h base/BsDate.h base/Clock.h base/DateText.h base/Grade.h base/MonthLengths.h base/Names.h base/Result.h
        base/Text.h base/TimeZone.h
        almanac/Almanac.h almanac/DataStoreEvents.h almanac/DataStoreTithi.h almanac/Edition.h almanac/YearFile.h
        almanac/YearList.h
        calendar/Clock.h calendar/DataStore.h calendar/DataStoreFunctions.h calendar/MonthTable.h calendar/TimeZone.h)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${headers}/${folder} COMPONENT model)
endforeach()
# calendar/MonthTable.h includes it.
install(FILES ${DINMALA_TABLES_DIR}/generated/MonthTable.inc
    DESTINATION ${headers}/generated COMPONENT model)

install(EXPORT dinmala NAMESPACE dinmala:: FILE dinmala-config.cmake
    DESTINATION ${package} COMPONENT model)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/dinmala-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/dinmala-config-version.cmake DESTINATION ${package} COMPONENT model)

file(RELATIVE_PATH DINMALA_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/dinmala.pc.in ${PROJECT_BINARY_DIR}/dinmala.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/dinmala.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT model)
