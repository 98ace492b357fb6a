# Makes blocks of the examples in the comments of a header, line by line.
s|^ *///* *@code$|```cpp|
t
s|^ *///* *@endcode$|```|
t
s|^ */// \{0,1\}||
t
s|.*||
