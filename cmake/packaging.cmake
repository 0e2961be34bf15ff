# Where the programs find their demo market and their manual, what is installed where, and the
# Debian package: cpack -G DEB in the build directory.

include(GNUInstallDirs)

# A program looks in <its directory>/../share/orin. In the build tree that leads to the sources.
set(build_share ${CMAKE_BINARY_DIR}/src/share/orin)
file(MAKE_DIRECTORY ${build_share})
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/demo ${build_share}/demo SYMBOLIC)
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/docs/manual ${build_share}/manual SYMBOLIC)

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(packaged ${CMAKE_BINARY_DIR}/packaging)

# Text files with the version in them.
foreach(name orin.metainfo.xml debian/changelog)
  configure_file(${packaging}/${name} ${packaged}/${name} @ONLY)
endforeach()

# Compressed without names and times, so that equal sources give equal packages.
set(zipped)
function(add_zipped source result)
  add_custom_command(OUTPUT ${result}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${packaged}/man
    COMMAND gzip -9nc ${source} > ${result}
    DEPENDS ${source} VERBATIM)
  set(zipped ${zipped} ${result} PARENT_SCOPE)
endfunction()
foreach(page orin orin-cli orin-draw)
  add_zipped(${packaging}/man/${page}.1 ${packaged}/man/${page}.1.gz)
endforeach()
add_zipped(${packaged}/debian/changelog ${packaged}/changelog.Debian.gz)
add_custom_target(orin_packaging ALL DEPENDS ${zipped})

set(programs orin-cli)
if(TARGET orin)
  list(APPEND programs orin orin-draw)
endif()
# cpack builds nothing; whoever has built the programs has all that it takes.
add_dependencies(orin-cli orin_packaging)
install(TARGETS ${programs})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/demo DESTINATION ${CMAKE_INSTALL_DATADIR}/orin)
# The manual links to the pages beside it.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/orin)
install(FILES ${packaging}/orin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/orin.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${packaged}/orin.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
  RENAME jp.orin.orin.metainfo.xml)
install(FILES ${packaged}/man/orin.1.gz ${packaged}/man/orin-cli.1.gz
  ${packaged}/man/orin-draw.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/ja/man1)
install(FILES ${packaged}/changelog.Debian.gz ${packaging}/debian/copyright
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orin)
install(FILES ${packaging}/debian/lintian-overrides
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME orin)

# The pages are Japanese in every locale: there are no others.
file(MAKE_DIRECTORY ${packaged}/man1)
foreach(page orin orin-cli orin-draw)
  file(CREATE_LINK ../ja/man1/${page}.1.gz ${packaged}/man1/${page}.1.gz SYMBOLIC)
endforeach()
install(DIRECTORY ${packaged}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orin)
set(CPACK_PACKAGE_VENDOR "ミルテの開発者")
set(CPACK_PACKAGE_CONTACT "ミルテの開発者 <orin@example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "米国株の株価データの管理と株価分析")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "ミルテは、米国株を調べる個人投資家のためのプログラムです。\n\
上場銘柄の日足を手元に蓄え、ＣＳＶファイルから更新し、日本語の\n\
分析項目で書いた条件で市場全体から銘柄を選び出します。\n\n\
ウィンドウの orin とコマンドの orin-cli、実際の株価による見本市場と\n\
使い方の説明が入っています。")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no library call shows: the reader of the icon, the Japanese of the toolkit's own dialogs, and
# letters to show anything at all.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "libqt6svg6, qt6-translations-l10n, fonts-noto-cjk | fonts-japanese-gothic")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
include(CPack)
