# The same suites on the real services, on a private X desktop with real other programs.
add_executable(linux_contract_tests LinuxContractDesktop.cpp LinuxContractTests.cpp
  ${CMAKE_SOURCE_DIR}/Tests/Desktop/ClipboardProgram.cpp
  ${CMAKE_SOURCE_DIR}/Tests/Desktop/DesktopRamps.cpp
  ${CMAKE_SOURCE_DIR}/Tests/Desktop/UpdateFeed.cpp)
find_package(PkgConfig REQUIRED)
pkg_check_modules(ZEPHYX_TEST_SIGNATURES REQUIRED IMPORTED_TARGET libsodium)
target_link_libraries(linux_contract_tests PRIVATE desktop_harness https_server zephyx_linux Qt6::Network
  PkgConfig::ZEPHYX_TEST_SIGNATURES GTest::gtest_main)
set_time_limit(time_limit 60)
gtest_discover_tests(linux_contract_tests DISCOVERY_MODE PRE_TEST
  PROPERTIES TIMEOUT ${time_limit} LABELS desktop)
