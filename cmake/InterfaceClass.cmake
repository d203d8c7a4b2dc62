# The device-interface class that the cards' kernel driver registers, and by which the library finds them.
set(TREVIK_INTERFACE_CLASS "6f7a2c1e-4b0d-4d35-9a61-2e7d1c5890b4" CACHE STRING
    "Device-interface class of the cards' kernel driver: a GUID in lower case, without braces")
set(two "[0-9a-f][0-9a-f]")
set(four "${two}${two}")
if(NOT TREVIK_INTERFACE_CLASS MATCHES "^${four}${four}-${four}-${four}-${four}-${four}${four}${four}$")
    message(FATAL_ERROR "TREVIK_INTERFACE_CLASS is no GUID: \"${TREVIK_INTERFACE_CLASS}\"; it looks like "
        "01234567-89ab-cdef-0123-456789abcdef")
endif()
string(REPLACE "-" ";" groups ${TREVIK_INTERFACE_CLASS})
list(GET groups 0 TREVIK_CLASS_1)
list(GET groups 1 TREVIK_CLASS_2)
list(GET groups 2 TREVIK_CLASS_3)
list(GET groups 3 first_bytes)
list(GET groups 4 last_bytes)
string(REGEX REPLACE "(${two})" "0x\\1, " TREVIK_CLASS_4 "${first_bytes}${last_bytes}")
string(REGEX REPLACE ", $" "" TREVIK_CLASS_4 "${TREVIK_CLASS_4}")
configure_file(${PROJECT_SOURCE_DIR}/src/driver/interface_class.h.in
    ${PROJECT_BINARY_DIR}/generated/driver/interface_class.h @ONLY)
