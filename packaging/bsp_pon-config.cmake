# find_package(bsp_pon) gives the targets bsp_pon::bsp_pon and bsp_pon::board; with COMPONENTS testing also
# bsp_pon::ponsim, the simulator in a test, and bsp_pon::recording_board, which stands in for the board's libraries.
include(${CMAKE_CURRENT_LIST_DIR}/bsp_pon-board.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/bsp_pon-library.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/bsp_pon-testing.cmake OPTIONAL RESULT_VARIABLE bsp_pon_testing_FOUND)
foreach(component IN LISTS bsp_pon_FIND_COMPONENTS)
    if(bsp_pon_FIND_REQUIRED_${component} AND NOT bsp_pon_${component}_FOUND)
        set(bsp_pon_FOUND FALSE)
        set(bsp_pon_NOT_FOUND_MESSAGE "bsp_pon has no component \"${component}\" here.")
    endif()
endforeach()
