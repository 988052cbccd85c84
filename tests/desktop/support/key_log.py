"""key_log.py TITLE: a window that writes a line for every key that is pressed or released in it."""

import sys

from Xlib import X, XK, display


def main():
    names = {value: name[3:] for name, value in vars(XK).items() if name.startswith("XK_")}
    connection = display.Display()
    screen = connection.screen()
    window = screen.root.create_window(0, 0, 300, 200, 0, screen.root_depth,
                                       background_pixel=screen.white_pixel,
                                       event_mask=X.KeyPressMask | X.KeyReleaseMask)
    window.set_wm_name(sys.argv[1])
    window.map()
    while True:
        event = connection.next_event()
        if event.type in (X.KeyPress, X.KeyRelease):
            keysym = connection.keycode_to_keysym(event.detail, 0)
            print("+" if event.type == X.KeyPress else "-", names.get(keysym, hex(keysym)),
                  sep="", flush=True)


if __name__ == "__main__":
    main()
