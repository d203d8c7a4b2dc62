# TrevikA::TrevikA is the library, TrevikA::Virtual the one with virtual cards inside. Both for 32-bit programs of any
# compiler that takes an import library of MinGW or of MSVC. The DLL has to be put beside the program.
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../../.. ABSOLUTE)
if(MSVC)
    set(import_library TrevikA.lib)
else()
    set(import_library libTrevikA.dll.a)
endif()
foreach(library TrevikA Virtual)
    set(folder ${root})
    if(library STREQUAL "Virtual")
        set(folder ${root}/virtual)
    endif()
    if(NOT TARGET TrevikA::${library})
        add_library(TrevikA::${library} SHARED IMPORTED)
        set_target_properties(TrevikA::${library} PROPERTIES
            IMPORTED_LOCATION ${folder}/TrevikA.dll
            IMPORTED_IMPLIB ${folder}/lib/${import_library}
            INTERFACE_INCLUDE_DIRECTORIES ${root}/include)
    endif()
endforeach()
unset(root)
unset(import_library)
unset(folder)
