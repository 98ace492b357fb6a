# What is installed to be read: the manual and the examples, with the links between them, and what
# Debian wants beside each package.
set(documentation ${CMAKE_INSTALL_DATADIR}/doc/kobase)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
        DESTINATION ${documentation} COMPONENT documentation)
install(DIRECTORY docs DESTINATION ${documentation} COMPONENT documentation
        FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN site EXCLUDE PATTERN man EXCLUDE)
install(DIRECTORY examples DESTINATION ${documentation} COMPONENT documentation
        PATTERN "*.out" EXCLUDE PATTERN check.cmake EXCLUDE)

# The same bytes from the same changes, whenever they are packed.
set(changelog ${PROJECT_BINARY_DIR}/changelog.gz)
file(ARCHIVE_CREATE OUTPUT ${changelog} PATHS ${PROJECT_SOURCE_DIR}/CHANGELOG.md
     FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9 MTIME 0)

# Usage: debian_papers(COMPONENT PACKAGE)
function(debian_papers component package)
    install(FILES ${changelog} ${PROJECT_SOURCE_DIR}/cmake/copyright
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
            COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

debian_papers(runtime libkobase1)
debian_papers(development libkobase-dev)
debian_papers(tools kobase-tools)
debian_papers(documentation libkobase-doc)
