# Warning flags and sanitizer flags for our own targets. Every file of ours builds
# clean with this set; ZR_WERROR (the test command's builds) makes it binding.
function(zr_target_defaults target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Wold-style-cast
                                           -Wcast-qual -Wformat=2)
  if(ZR_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(ZR_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=${ZR_SANITIZE} -fno-omit-frame-pointer
                                             -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${ZR_SANITIZE})
  endif()
endfunction()

# Turns a text file into a C++ source that defines `const char* const NAME`, so
# that schemas and the message catalogue travel inside the library.
function(zr_embed_text out_var name input)
  set(output ${CMAKE_BINARY_DIR}/gen/embed_${name}.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${input} -DOUTPUT=${output} -DNAME=${name}
            -P ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
    DEPENDS ${input} ${PROJECT_SOURCE_DIR}/cmake/EmbedText.cmake
    COMMENT "Embedding ${name}"
    VERBATIM)
  set(${out_var} ${${out_var}} ${output} PARENT_SCOPE)
endfunction()
