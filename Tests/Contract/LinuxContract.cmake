# The same suites on the real services, on a private X desktop with real other programs.
add_executable(linux_contract_tests LinuxContractDesktop.cpp LinuxContractTests.cpp
  ${CMAKE_SOURCE_DIR}/Tests/Desktop/ClipboardProgram.cpp
  ${CMAKE_SOURCE_DIR}/Tests/Desktop/DesktopRamps.cpp)
target_link_libraries(linux_contract_tests PRIVATE desktop_harness https_server zephyx_linux
  GTest::gtest_main)
set_time_limit(time_limit 60)
gtest_discover_tests(linux_contract_tests DISCOVERY_MODE PRE_TEST
  PROPERTIES TIMEOUT ${time_limit} LABELS desktop)
