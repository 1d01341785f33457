import QtQuick
import Zephyx.Screens

/// What this desktop lacks, and what the user can do about it.
QtObject {
    id: notices

    required property MainController screen
    readonly property bool known: typeof desktop !== "undefined"
    readonly property bool trayless: known && desktop.hasTray === false
    readonly property var found: [
        {
            id: "tray",
            holds: trayless,
            title: "No place for the tray icon",
            text: "This desktop shows no tray icons (GNOME does with the AppIndicator extension). "
                + "To open Zephyx, press " + (screen.hotkeys.opener || "its hotkey")
                + " or start it again.",
            opensMenu: true
        },
        {
            id: "wayland",
            holds: known && desktop.waylandSession === true,
            title: "This is a Wayland session",
            text: "Zephyx works with X11 programs only here: in others, nothing copied is recorded, "
                + "and hotkeys do nothing. Choose an X11 (Xorg) session when you log in to have "
                + "everything.",
            opensMenu: false
        }
    ].filter(notice => notice.holds)
    readonly property var unread:
        found.filter(notice => !screen.settings.dismissedNotices.includes(notice.id))

    onTraylessChanged: if (trayless) screen.hotkeys.refresh()
    Component.onCompleted: if (trayless) screen.hotkeys.refresh()
}
