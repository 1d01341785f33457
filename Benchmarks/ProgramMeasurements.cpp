// Measures the whole program from outside, on a private desktop: prints "name value unit" lines.
// `program_measurements start` measures one group only.
#include <exception>
#include <iostream>
#include <string>
#include <utility>

#include "Benchmarks/Measuring.h"

int main(int argc, char** argv) {
  using namespace zephyx;
  const std::string wanted = argc > 1 ? argv[1] : "";
  const std::pair<const char*, void (*)()> groups[] = {
      {"limits", &measureLimits}, {"start", &measureStart},           {"first", &measureFirstCopy},
      {"copies", &measureCopies}, {"translate", &measureTranslation}, {"menu", &measureMenu},
      {"idle", &measureIdle}};
  try {
    for (const auto& [name, measure] : groups)
      if (wanted.empty() || wanted == name) measure();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
