import Kelpa.Goals

/// Two goals with their menus.
TodoCase {
    id: root

    /// The text of the entry that Return would choose; empty for none.
    function highlighted() {
        const item = menuItems().find(item => item.highlighted);
        return item === undefined ? "" : item.text;
    }
    /// By the pointer, which leaves the selection and the focus as they are.
    function openMenuOf(title) {
        mouseMove(root.goalBoard, 1, root.goalBoard.height - 1);
        tryVerify(() => !isMoving());
        view().contentY = 0;
        const head = only(all(column(title), item => item instanceof ColumnHeader));
        mouseClick(button(head, "ellipsis"));
        tryVerify(() => menuItems().length === 12);
    }
    function openGoalMenu() {
        openMenuOf("First");
    }
    function closeMenu() {
        keyClick(Qt.Key_Escape);
        tryVerify(() => menuItems().length === 0);
    }
}
