#pragma once

#import <FlutterMacOS/FlutterMacOS.h>

/// The generated plug-in registrant is a Swift function, which only Swift can call;
/// PluginRegistrant.swift is this class.
@interface ZephyxPluginRegistrant : NSObject
+ (void)registerPluginsWithRegistry:(id<FlutterPluginRegistry>)registry;
@end
