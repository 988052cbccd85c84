"""Windows of one colour on X11, as `PlainWindows` opens them on Wayland."""


class XWindows:
    def __init__(self, desktop, width=200, height=150):
        self._display = desktop.x
        self._size = width, height
        self._colour = 0x808080

    def open(self, title):
        from Xlib import X, Xutil

        width, height = self._size
        window = self._display.screen().root.create_window(
            0, 0, *self._size, 0, X.CopyFromParent, background_pixel=self._colour)
        window.set_wm_name(title.decode())
        window.set_wm_class("plain", "Plain")
        # Otherwise a window manager makes one that is larger than the screen smaller.
        window.set_wm_normal_hints(flags=Xutil.PMinSize | Xutil.PMaxSize, min_width=width, max_width=width,
                                   min_height=height, max_height=height)
        window.map()
        self._display.flush()
        return window

    def rename(self, window, title):
        window.set_wm_name(title.decode())
        self._display.flush()

    def paint(self, window, colour):
        window.change_attributes(background_pixel=colour)
        window.clear_area(0, 0, *self._size)
        self._display.flush()

    def close(self, window):
        window.destroy()
        self._display.flush()

    def settle(self):
        self._display.sync()

    def end(self):
        pass
