"""What a part of the screen shows, as a person sees it."""

from collections import Counter


def rows(desktop, frame):
    """The pixels of a frame, a tuple of them for each row."""
    from Xlib import X

    x, y, width, height = frame
    data = desktop.x.screen().root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF).data
    pixels = [data[place:place + 3] for place in range(0, len(data), 4)]
    return [tuple(pixels[row * width:(row + 1) * width]) for row in range(height)]


def ink_width(desktop, frame):
    """From the first to the last column of the frame in which something else is drawn than its ground."""
    picture = rows(desktop, frame)
    ground = Counter(pixel for row in picture for pixel in row).most_common(1)[0][0]
    drawn = [column for column in range(frame[2]) if any(row[column] != ground for row in picture)]
    return drawn[-1] - drawn[0] + 1 if drawn else 0


def has_color(pixel, color):
    """Whether a pixel has, nearly, the colour "#rrggbb"."""
    wanted = bytes.fromhex(color[1:])
    return all(abs(part - other) <= 6 for part, other in zip(pixel[2::-1], wanted))
