# Checks that a file holds the whole text of another.
#   cmake -Dpart=FILE -Dwhole=FILE -P contains_file.cmake
file(READ ${part} part_text)
file(READ ${whole} whole_text)
string(FIND "${whole_text}" "${part_text}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${whole} does not hold the text of ${part}")
endif()
