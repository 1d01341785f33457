import FlutterMacOS
import Foundation

/// Lets the host, which is not written in Swift, call the generated plug-in registrant.
@objc(ZephyxPluginRegistrant)
public final class PluginRegistrant: NSObject {
  @objc(registerPluginsWithRegistry:)
  public static func registerPlugins(with registry: FlutterPluginRegistry) {
    RegisterGeneratedPlugins(registry: registry)
  }
}
