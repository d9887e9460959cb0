# Makes a source file from a text file, a string for each line: cmake -DIN=de.po -DOUT=de_po.cpp -DNAME=kGerman
# -P embed_texts.cmake. Runs while the program is built.
file(READ ${IN} text)
string(REPLACE "\r" "" text "${text}")
string(REPLACE "\n" "\n)po\",\n    R\"po(" text "${text}")
file(WRITE ${OUT} "// Made by cmake/embed_texts.cmake.
#include \"window/languages.h\"

namespace lorivan {

static constexpr std::string_view kLines[] = {
    R\"po(${text})po\"};
const std::span<const std::string_view> ${NAME} = kLines;

}  // namespace lorivan
")
