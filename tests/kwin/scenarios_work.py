"""Working on one goal, and going back."""

import work


def working_on_a_goal_minimises_the_others_and_back_restores_them(desktop, binary):
    work.check_others_are_minimised_and_back_restores_them(
        desktop, binary, desktop.start_program,
        lambda window: desktop.window(window.number).is_minimized,
        lambda window, is_minimized: desktop.change(
            window, f"window.minimized = {str(is_minimized).lower()}"))
