"""One round on labwc, whose desktop the tests on Wayland alone have."""

from labwc import LabwcDesktop

import on_desktop


def measure(desktop, binary):
    on_desktop.measure(desktop, binary)


measure.desktop = {"kind": LabwcDesktop}
