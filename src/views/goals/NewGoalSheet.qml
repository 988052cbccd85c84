pragma ComponentBehavior: Bound

import Kelpa

/// Asks for the title of a goal that is to be created.
TitleSheet {
    id: root

    title: root.board.copy.text(CopyKey.CreateGoalTitle)
    explanation: root.board.copy.text(CopyKey.CreateGoalText)
    placeholder: root.board.copy.text(CopyKey.CreateGoalPlaceholder)
    fieldLabel: root.board.copy.text(CopyKey.GoalName)
    confirmLabel: root.board.copy.text(CopyKey.Create)
}
