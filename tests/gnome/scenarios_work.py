"""Working on one goal, and going back."""

import work

_IS_MINIMIZED = """global.get_window_actors().map(actor => actor.meta_window)
    .some(window => window.get_id() === {} && window.minimized)"""


def working_on_a_goal_minimises_the_others_and_back_restores_them(desktop, binary):
    work.check_others_are_minimised_and_back_restores_them(
        desktop, binary, desktop.start_foot,
        lambda window: desktop.evaluate(_IS_MINIMIZED.format(window.number)),
        lambda window, is_minimized: desktop.on_window(
            window, "window.minimize()" if is_minimized else "window.unminimize()"))
