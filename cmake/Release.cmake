# What a release knows of itself and of its successors, on every platform.

set(ZEPHYX_BUILD_NUMBER "1" CACHE STRING "What updates are compared by; grows with every release")
set(ZEPHYX_UPDATE_FEED "" CACHE STRING "https address of the update feed; no updates when empty")
set(ZEPHYX_UPDATE_KEY "" CACHE STRING "Public Ed25519 key of the updates, in base64")
set(ZEPHYX_UPDATE_INTERVAL 86400 CACHE STRING "Seconds between two checks, at least 3600")
