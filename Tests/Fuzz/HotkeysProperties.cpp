#include <filesystem>
#include <fstream>

#include "Platform/Linux/LinuxUserDefaults.h"
#include "Platform/SystemLog.h"
#include "Runner/HotkeyConfig.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

struct CountingLog final : SystemLog {
  void log(std::string_view) override { ++lines; }
  int lines = 0;
};

const char* brokenTableProperty(BytesView bytes) {
  const auto table = decodeHotkeyTable(bytes);
  if (table && decodeHotkeyTable(encodeHotkeyTable(*table)) != table) {
    return "a table of hotkeys survives its encoding";
  }
  return nullptr;
}

}  // namespace

const char* brokenHotkeysProperty(BytesView bytes) {
  if (const char* broken = brokenTableProperty(bytes)) return broken;

  static const TemporaryDirectory folder;
  const auto path = folder.path() / "defaults.json";
  const auto aside = folder.path() / "defaults.json.damaged";
  std::filesystem::remove(aside);
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  CountingLog log;
  const LinuxUserDefaults defaults(folder.path().string(), log);
  if (std::filesystem::exists(path) != (log.lines == 0) ||
      std::filesystem::exists(aside) != (log.lines == 1)) {
    return "what cannot be read is put aside, and said so";
  }
  if (log.lines == 1 && std::filesystem::file_size(aside) != bytes.size()) {
    return "what is put aside is whole";
  }
  const auto stored = defaults.data("hotkeys.v1");
  return stored ? brokenTableProperty(*stored) : nullptr;
}

}  // namespace zephyx
