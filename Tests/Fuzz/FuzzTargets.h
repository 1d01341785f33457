#pragma once

#include "Platform/BinaryMessenger.h"

namespace zephyx {

// What reads bytes of others, one function a place where they come in. Each reads any bytes and
// returns null, or the name of a property that does not hold.

/// A feed of updates, as its server sends it.
const char* brokenAppcastProperty(BytesView bytes);
/// A chat server's answer. The first byte chooses the status, the second how it is divided.
const char* brokenChatProperty(BytesView bytes);
/// Another program's copy: lines of "target<tab>data".
const char* brokenClipboardProperty(BytesView bytes);
/// A message of a screen.
const char* brokenCodecProperty(BytesView bytes);
/// The file of settings, and the table of hotkeys in it.
const char* brokenHotkeysProperty(BytesView bytes);
/// Pictures of every kind but PNG.
const char* brokenPictureProperty(BytesView bytes);
/// A PNG file, as it is and with its checksums put right; else a description of one.
const char* brokenPngProperty(BytesView bytes);
/// A coding agent's session log. The first byte chooses how it is divided.
const char* brokenSessionLogProperty(BytesView bytes);
/// What the usage service answers.
const char* brokenUsageReplyProperty(BytesView bytes);

}  // namespace zephyx
