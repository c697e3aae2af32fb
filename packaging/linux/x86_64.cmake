include(${CMAKE_CURRENT_LIST_DIR}/common.cmake)
set(CMAKE_CXX_COMPILER g++)
