#pragma once

#include <QtGui/QIcon>
#include <string>

namespace zephyx {

/// A system symbol by its name, drawn as a template image for a status bar: one colour, crisp at
/// every size. An unknown name gives a plain dot.
QIcon symbolIcon(const std::string& symbol);

}  // namespace zephyx
