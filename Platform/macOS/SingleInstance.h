#pragma once

namespace zephyx {

/// The system starts a bundle once only, but a program inside a bundle can also be run by its path.
/// True when another process of this bundle is running; it has been activated then and hears that
/// the application was opened again. Asked before this process becomes an application.
bool handOverToRunningInstance();

}  // namespace zephyx
