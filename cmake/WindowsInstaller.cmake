# The Windows installer, made with `cpack -G NSIS` (makensis from Debian's nsis package): the programs
# and skin bitmaps in one folder with the Qt and mingw runtime DLLs and the Qt plugins the program
# loads (Qt looks for plugin folders beside the program), a Start-menu entry and an uninstaller.
install(TARGETS TavoMP3Player TavoMP3Update RUNTIME DESTINATION .)
install(FILES ${ASSET_FILES} DESTINATION .)

get_target_property(_qt_core_dll Qt6::Core IMPORTED_LOCATION_RELEASE)
get_filename_component(_qt_bin ${_qt_core_dll} DIRECTORY)
get_filename_component(_qt_plugins ${_qt_bin}/../plugins ABSOLUTE)
install(FILES ${_qt_bin}/Qt6Core.dll ${_qt_bin}/Qt6Gui.dll ${_qt_bin}/Qt6Widgets.dll ${_qt_bin}/Qt6Network.dll
        DESTINATION .)
install(FILES ${_qt_plugins}/platforms/qwindows.dll DESTINATION platforms)
install(DIRECTORY ${_qt_plugins}/styles ${_qt_plugins}/imageformats DESTINATION .)

# Qt's own texts (message-box buttons, file dialogs) in German; the files are the same on every platform
# (Debian: qt6-translations-l10n).
install(FILES /usr/share/qt6/translations/qtbase_de.qm DESTINATION translations)

# The compiler's own runtime (posix threads).
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll OUTPUT_VARIABLE _libstdcxx
                OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libgcc_s_seh-1.dll OUTPUT_VARIABLE _libgcc
                OUTPUT_STRIP_TRAILING_WHITESPACE)
find_file(TAVO_WINPTHREAD_DLL libwinpthread-1.dll PATHS /usr/${TAVO_MINGW}/lib /usr/${TAVO_MINGW}/bin
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
install(FILES ${_libstdcxx} ${_libgcc} ${TAVO_WINPTHREAD_DLL} DESTINATION .)

set(CPACK_GENERATOR NSIS)
set(CPACK_STRIP_FILES ON)
# A 64-bit installer for the 64-bit program, into the 64-bit program folder.
set(CPACK_NSIS_DEFINES "Unicode true\nTarget amd64-unicode")
set(CPACK_NSIS_INSTALL_ROOT "$PROGRAMFILES64")
set(CPACK_PACKAGE_NAME TavoMP3Player)
set(CPACK_PACKAGE_VENDOR "TavoMP3")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Playlisten und gewichtete Zufallswiedergabe für große MP3-Sammlungen")
set(CPACK_PACKAGE_INSTALL_DIRECTORY TavoMP3Player)
set(CPACK_NSIS_DISPLAY_NAME "Tavo MP3 Player")
set(CPACK_NSIS_PACKAGE_NAME "Tavo MP3 Player")
# Start-menu entry: program file name, then the entry's caption.
set(CPACK_PACKAGE_EXECUTABLES TavoMP3Player "Tavo MP3 Player")
set(CPACK_NSIS_EXECUTABLES_DIRECTORY .)
set(CPACK_NSIS_INSTALLED_ICON_NAME TavoMP3Player.exe)
set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
set(CPACK_NSIS_MUI_FINISHPAGE_RUN TavoMP3Player.exe)
include(CPack)
