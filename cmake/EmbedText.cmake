# cmake -DINPUT=file -DOUTPUT=file.cpp -DNAME=symbol -P EmbedText.cmake
file(READ ${INPUT} content HEX)
string(LENGTH "${content}" hexlen)
math(EXPR len "${hexlen} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${content}")
file(WRITE ${OUTPUT}
  "// Generated from ${INPUT}; do not edit.\n"
  "#include <cstddef>\n"
  "namespace zr_embedded {\n"
  "extern const char ${NAME}[];\n"
  "extern const std::size_t ${NAME}_size;\n"
  "const char ${NAME}[] = {${bytes}0x00};\n"
  "const std::size_t ${NAME}_size = ${len};\n"
  "}\n")
