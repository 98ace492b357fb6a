# The library's interface needs nothing but itself: expat is private to it.
include(${CMAKE_CURRENT_LIST_DIR}/kobase-targets.cmake)
