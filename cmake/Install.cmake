# What an installation holds: program, library, codec library beside it, headers, manual page.
install(TARGETS zorvan_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS ZORVAN LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS Filter LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/zorvan)
install(DIRECTORY include/zorvan DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES docs/zorvan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
