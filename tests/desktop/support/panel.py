"""panel.py HEIGHT: a panel along the upper edge of the screen, which keeps its room free."""

import sys

from Xlib import Xatom, display


def main():
    height = int(sys.argv[1])
    connection = display.Display()
    screen = connection.screen()
    window = screen.root.create_window(0, 0, screen.width_in_pixels, height, 0, screen.root_depth,
                                       background_pixel=screen.black_pixel)
    window.set_wm_name("Panel")
    window.change_property(connection.intern_atom("_NET_WM_WINDOW_TYPE"), Xatom.ATOM, 32,
                           [connection.intern_atom("_NET_WM_WINDOW_TYPE_DOCK")])
    window.change_property(connection.intern_atom("_NET_WM_STRUT_PARTIAL"), Xatom.CARDINAL, 32,
                           [0, 0, height, 0, 0, 0, 0, 0, 0, screen.width_in_pixels - 1, 0, 0])
    window.change_property(connection.intern_atom("_NET_WM_STRUT"), Xatom.CARDINAL, 32, [0, 0, height, 0])
    window.map()
    while True:
        connection.next_event()


if __name__ == "__main__":
    main()
