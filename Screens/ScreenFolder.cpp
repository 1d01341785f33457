#include "Screens/ScreenFolder.h"

#include <QtCore/QDebug>

#include "Platform/Directories.h"

namespace zephyx {

std::string screenFolder(const Directories& directories) {
  return directories.applicationSupport().value_or(directories.home() +
                                                   "/Library/Application Support") +
         "/com.zephyx.app";
}

void reportToLog(std::string_view line) {
  qWarning().noquote() << "[Screen]"
                       << QLatin1String(line.data(), static_cast<qsizetype>(line.size()));
}

}  // namespace zephyx
