#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Platform/Platform.h"
#include "Tests/Contract/ContractDesktop.h"

namespace zephyx {

/// Base of the contract suites: one fresh desktop per test.
class ContractTest : public testing::TestWithParam<ContractDesktopFactory> {
 protected:
  ContractTest() : desktop_(GetParam().make()) {}

  ContractDesktop& desktop() { return *desktop_; }
  Platform& platform() { return desktop_->platform(); }

  bool becomesTrue(const std::function<bool()>& condition) { return desktop_->runUntil(condition); }

 private:
  std::unique_ptr<ContractDesktop> desktop_;
};

/// For the last argument of INSTANTIATE_TEST_SUITE_P.
inline std::string contractRunName(const testing::TestParamInfo<ContractDesktopFactory>& info) {
  return info.param.name;
}

}  // namespace zephyx
