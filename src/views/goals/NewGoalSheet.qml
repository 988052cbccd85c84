pragma ComponentBehavior: Bound

import Kelpa.Appearance

/// Asks for the title of a goal that is to be created.
TitleSheet {
    id: root

    title: ViewSettings.copy.text(CopyKey.CreateGoalTitle)
    explanation: ViewSettings.copy.text(CopyKey.CreateGoalText)
    placeholder: ViewSettings.copy.text(CopyKey.CreateGoalPlaceholder)
    fieldLabel: ViewSettings.copy.text(CopyKey.GoalName)
    confirmLabel: ViewSettings.copy.text(CopyKey.Create)
}
