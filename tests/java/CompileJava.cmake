# Compiles the Java proxies SWIG generated below GENERATED together with
# SOURCES into OUT, then touches STAMP. The proxies' names are known only
# after SWIG has run, so they are collected here, at build time.
file(GLOB_RECURSE proxies "${GENERATED}/*.java")
file(REMOVE_RECURSE "${OUT}")
file(MAKE_DIRECTORY "${OUT}")
execute_process(COMMAND "${JAVAC}" -nowarn -encoding UTF-8 -d "${OUT}" ${proxies} ${SOURCES}
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "javac failed")
endif()
file(TOUCH "${STAMP}")
