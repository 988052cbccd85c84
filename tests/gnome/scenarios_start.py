"""What the session of GNOME starts."""

import session_start


def the_session_starts_kelpa_without_a_window_and_super_twice_shows_it(desktop, binary):
    session_start.check_session_starts_kelpa(
        desktop, binary, lambda: desktop.keyboard.at_once("Super_L", "Super_L"))
