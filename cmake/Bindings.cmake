# What other languages call the library through, made from the public headers so that it cannot differ from them.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

file(GLOB TREVIK_HEADERS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/trevik/*.h)
set(TREVIK_BINDINGS_DIR ${CMAKE_BINARY_DIR}/bindings)
set(TREVIK_BINDINGS)
foreach(binding csharp_bindings:TrevikA.cs python_bindings:trevika.py)
    string(REPLACE ":" ";" binding ${binding})
    list(GET binding 0 script)
    list(GET binding 1 file)
    add_custom_command(OUTPUT ${TREVIK_BINDINGS_DIR}/${file}
        COMMAND ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1
            ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/${script}.py ${TREVIK_BINDINGS_DIR}/${file}
        DEPENDS ${PROJECT_SOURCE_DIR}/scripts/${script}.py ${PROJECT_SOURCE_DIR}/scripts/public_api.py
            ${TREVIK_HEADERS}
        VERBATIM)
    list(APPEND TREVIK_BINDINGS ${TREVIK_BINDINGS_DIR}/${file})
endforeach()
add_custom_target(bindings ALL DEPENDS ${TREVIK_BINDINGS})
