# find_package(zentgeo): zentgeo::zentgeo, the geometry; zentgeo::plain_host, what it asks of a host, for
# programs without one.
include(${CMAKE_CURRENT_LIST_DIR}/zentgeo-targets.cmake)
