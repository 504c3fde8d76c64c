# The build tree mirrors the installed one (bin/ beside share/spurkiste/), so that the programs find their
# resources by the same relative path in both. A link instead of a copy: edited texts show at the next start.
include(GNUInstallDirs)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/resources ${CMAKE_BINARY_DIR}/share/spurkiste SYMBOLIC)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/spurkiste PATTERN *.md EXCLUDE)
