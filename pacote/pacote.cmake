# The program as an office installs it: a Debian package made by CPack ("make deb").
include(GNUInstallDirs)

set(VEXA_ID org.vexaplus.VexaPlus)
set(VEXA_PACOTE_DIR ${CMAKE_CURRENT_LIST_DIR})
set(VEXA_GERADO ${CMAKE_BINARY_DIR}/pacote)
string(TIMESTAMP VEXA_DATA_RFC "%a, %d %b %Y 00:00:00 +0000" UTC)

configure_file(${VEXA_PACOTE_DIR}/${VEXA_ID}.metainfo.xml.in ${VEXA_GERADO}/${VEXA_ID}.metainfo.xml
               @ONLY)
configure_file(${VEXA_PACOTE_DIR}/vexa.1.in ${VEXA_GERADO}/vexa.1 @ONLY)
configure_file(${VEXA_PACOTE_DIR}/changelog.in ${VEXA_GERADO}/changelog @ONLY)

# Debian keeps manual pages and changelogs compressed, without a time stamp inside.
foreach(arquivo vexa.1 changelog)
  add_custom_command(OUTPUT ${VEXA_GERADO}/${arquivo}.gz
    COMMAND gzip -9nc ${VEXA_GERADO}/${arquivo} > ${VEXA_GERADO}/${arquivo}.gz
    DEPENDS ${VEXA_GERADO}/${arquivo})
endforeach()
add_custom_target(vexa_pacote_docs ALL DEPENDS ${VEXA_GERADO}/vexa.1.gz ${VEXA_GERADO}/changelog.gz)

install(TARGETS vexa_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${VEXA_PACOTE_DIR}/${VEXA_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${VEXA_GERADO}/${VEXA_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${VEXA_PACOTE_DIR}/${VEXA_ID}.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(tamanho 16 32 48 64 128 256)
  install(FILES ${VEXA_PACOTE_DIR}/icone-${tamanho}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${tamanho}x${tamanho}/apps
          RENAME ${VEXA_ID}.png)
endforeach()
install(FILES ${VEXA_GERADO}/vexa.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${VEXA_PACOTE_DIR}/copyright ${VEXA_GERADO}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vexa-plus)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexa-plus)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Vexa Plus")
set(CPACK_PACKAGE_CONTACT "Vexa Plus <suporte@vexaplus.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "impressão de cheques com registro dos cheques emitidos")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Preenche e imprime cheques na impressora de documentos Vexa Plus, ou numa\n\
impressora simulada, e mantém o registro de todos os cheques emitidos: listas,\n\
filtros, cancelamento, cheques a prazo, cheques transferência, verso e cópia.\n\
Faz uma cópia de segurança dos dados todo dia.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the libraries' own dependencies don't bring: the SQLite driver and the window-system
# plugins that Qt loads at run time, and fonts of the widths a cheque is laid out in.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, qt6-qpa-plugins, fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/pacotes)
include(CPack)

# Installs the package on this machine, starts the installed program and removes it again.
# It needs root, and says so and is skipped without it: "ctest -L pacote".
add_test(NAME pacote_deb
  COMMAND sh ${VEXA_PACOTE_DIR}/testa_pacote.sh ${CMAKE_BINARY_DIR} ${PROJECT_VERSION})
set_tests_properties(pacote_deb PROPERTIES LABELS pacote SKIP_RETURN_CODE 77 TIMEOUT 600
  RUN_SERIAL TRUE)
