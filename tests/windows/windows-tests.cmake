# The Windows tests run under Wine (CMAKE_CROSSCOMPILING_EMULATOR, see scripts/test-windows.sh).

# The scripted stand-in player the link test drives. Plain Win32, no Qt, linked statically so that it
# runs from any folder.
add_executable(FakeWinamp WIN32 ${CMAKE_CURRENT_LIST_DIR}/FakeWinamp.cpp)
target_link_options(FakeWinamp PRIVATE -municode -static)
add_dependencies(windows_tst_WinampLink FakeWinamp)
add_dependencies(windows_tst_WinampPlayback FakeWinamp)
# The program finds the player by its window class: two tests with a stand-in each would find each other's.
set_tests_properties(windows/tst_WinampLink windows/tst_WinampPlayback PROPERTIES RESOURCE_LOCK FakeWinamp)

# The file-name hand-over is checked with a multi-byte code page: Wine takes Japanese settings (code page
# 932) from a Linux locale, made here without touching the system's locales. Without the locale data the
# test runs in the default code page with a name of umlauts.
find_program(TAVO_LOCALEDEF localedef)
if(TAVO_LOCALEDEF AND EXISTS /usr/share/i18n/locales/ja_JP)
    set(_locales ${CMAKE_BINARY_DIR}/locale)
    if(NOT EXISTS ${_locales}/ja_JP.UTF-8)
        file(MAKE_DIRECTORY ${_locales})
        execute_process(COMMAND ${TAVO_LOCALEDEF} -i ja_JP -f UTF-8 ${_locales}/ja_JP.UTF-8
                        RESULT_VARIABLE _localedef OUTPUT_QUIET ERROR_QUIET)
    endif()
    if(EXISTS ${_locales}/ja_JP.UTF-8)
        set_property(TEST windows/tst_WinampLink APPEND PROPERTY ENVIRONMENT "LOCPATH=${_locales}"
                     "LC_ALL=ja_JP.UTF-8")
    endif()
endif()

# The installer: silent install, the installed program against the stand-in player, uninstall.
add_test(NAME windows/installer COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/installer_check.sh ${CMAKE_BINARY_DIR})
set_tests_properties(windows/installer PROPERTIES RUN_SERIAL TRUE TIMEOUT 600)
