# Header-only libraries of the build machine for a cross build: links to their folders alone, so that nothing else of
# the build machine's headers is found beside them.
set(TREVIK_HEADER_LIBRARIES ${CMAKE_BINARY_DIR}/header-libraries)

# Sets `found` to whether `folder`, which holds `header`, can be included from ${TREVIK_HEADER_LIBRARIES} now.
function(trevik_header_library folder header found)
    find_path(TREVIK_${folder}_PARENT ${folder}/${header} NO_CMAKE_FIND_ROOT_PATH)
    mark_as_advanced(TREVIK_${folder}_PARENT)
    set(${found} FALSE PARENT_SCOPE)
    if(TREVIK_${folder}_PARENT)
        file(MAKE_DIRECTORY ${TREVIK_HEADER_LIBRARIES})
        file(CREATE_LINK ${TREVIK_${folder}_PARENT}/${folder} ${TREVIK_HEADER_LIBRARIES}/${folder} SYMBOLIC)
        set(${found} TRUE PARENT_SCOPE)
    endif()
endfunction()
