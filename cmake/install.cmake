# What `cmake --install` makes of a build. Program, modules and libraries lie side by side, since they find each other
# there; what a person types is a link to the program:
#   bin/zarbo-host, bin/zarbo-mdb -> lib/zarbo/…
#   share/zarbo/                     the sample standards, blocks, LISP examples
#   share/doc/zarbo/                 the documents
# The tree may be moved as a whole.
include(GNUInstallDirs)
set(home ${CMAKE_INSTALL_LIBDIR}/zarbo)
set(programs zarbo-host zarbo-mdb)
set(libraries platform_com zarbo_platform zarbo_host_core zarbo_desktop_qt zarbo_window zarbo zarbo_engine solid_module)
foreach(target ${programs} ${libraries})
  if(TARGET ${target})
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} RUNTIME DESTINATION ${home} LIBRARY DESTINATION ${home})
  endif()
endforeach()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
file(RELATIVE_PATH way /${CMAKE_INSTALL_BINDIR} /${home})
foreach(program ${programs})
  file(CREATE_LINK ${way}/${program} ${CMAKE_BINARY_DIR}/links/${program} SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/links/${program} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
install(DIRECTORY ${CMAKE_BINARY_DIR}/share/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zarbo
        FILES_MATCHING PATTERN standards.kv PATTERN *.dwg PATTERN settings EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DATADIR}/zarbo)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zarbo)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zarbo)
