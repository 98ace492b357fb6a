# The Debian packages, which scripts/package makes. It gives the architecture and what the
# programs depend on.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kobase)
set(CPACK_PACKAGE_CONTACT "The kobase developers <kobase@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkobase1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${PROJECT_BINARY_DIR}/shlibs ${PROJECT_SOURCE_DIR}/cmake/triggers)
file(WRITE ${PROJECT_BINARY_DIR}/shlibs
     "libkobase ${PROJECT_VERSION_MAJOR} libkobase1 (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkobase-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# For kobase_preprocess of the CMake package.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS kobase-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME kobase-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Shared library for expressions, XML documents and their preprocessing")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, CMake package and pkg-config file of libkobase")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "The XML preprocessor and the expression calculator of libkobase as programs")

include(CPack)
