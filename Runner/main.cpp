#include <cstdlib>

#include "Platform/Application.h"
#include "Platform/Platform.h"
#include "Runner/AppDelegate.h"
#include "Runner/SharedObjects.h"

int main(int argc, char** argv) {
  const auto platform = zephyx::makePlatform(argc, argv);
  if (!platform) return EXIT_SUCCESS;  // another instance takes over, or none is wanted
  const zephyx::SharedObjects sharedObjects(*platform);
  zephyx::AppDelegate delegate(*platform);
  return platform->application().run(delegate);
}
