pragma Singleton
import QtQuick

/// What keys do on every screen alike.
QtObject {
    /// Space, Return and Enter press what has the keyboard.
    function presses(event) {
        const isPress = event.key === Qt.Key_Space || event.key === Qt.Key_Return
            || event.key === Qt.Key_Enter
        event.accepted = isPress
            && (event.modifiers === Qt.NoModifier || event.modifiers === Qt.KeypadModifier)
        return event.accepted
    }

    /// Control and Tab go on to the next control also where Tab alone means something else.
    function goesOn(event, root) {
        const forward = event.key === Qt.Key_Tab && !(event.modifiers & Qt.ShiftModifier)
        if ((event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab)
                || !(event.modifiers & Qt.ControlModifier))
            return false
        move(root, forward)
        return true
    }

    function move(root, forward) {
        const from = root.Window.activeFocusItem ? root.Window.activeFocusItem : root
        from.nextItemInFocusChain(forward).forceActiveFocus(Qt.TabFocusReason)
    }
}
