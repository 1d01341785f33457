#include "Runner/InternetDateTime.h"

#include <gtest/gtest.h>

#include <string>

namespace zephyx {
namespace {

TEST(InternetDateTime, ReadsInstants) {
  EXPECT_DOUBLE_EQ(parseInternetDateTime("1970-01-01T00:00:00Z").value(), 0);
  EXPECT_DOUBLE_EQ(parseInternetDateTime("2025-01-01T10:00:00.125Z").value(), 1735725600.125);
  EXPECT_DOUBLE_EQ(parseInternetDateTime("2024-02-29T23:30:00-01:30").value(), 1709254800);
  EXPECT_DOUBLE_EQ(parseInternetDateTime("2024-02-29T23:30:00.5+05:45").value(), 1709228700.5);
}

TEST(InternetDateTime, RefusesEverythingElse) {
  for (const std::string text :
       {"", "2025-01-01", "2025-01-01T10:00:00", "2025-01-01 10:00:00Z", "2025-02-29T10:00:00Z",
        "2025-13-01T10:00:00Z", "2025-01-01T24:00:00Z", "2025-01-01T10:60:00Z",
        "2025-01-01T10:00:00.Z", "2025-01-01T10:00:00Zx", "2025-01-01T10:00:00+0100",
        "+025-01-01T10:00:00Z", "2025-01-01T10:00:00+01:"}) {
    EXPECT_FALSE(parseInternetDateTime(text)) << text;
  }
}

}  // namespace
}  // namespace zephyx
